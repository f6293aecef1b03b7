#pragma once

#include "StringBuffer.h"

#include <exception>

// Base of the foundation library's exceptions; what() is the message. Copies copy the message.
class KVBaseException : public std::exception {
public:
    explicit KVBaseException(const StringBuffer& message);
    explicit KVBaseException(const char* message);
    ~KVBaseException() override;

    const char* what() const noexcept override;
    const StringBuffer& GetMessage() const { return m_message; }

private:
    StringBuffer m_message;
};
