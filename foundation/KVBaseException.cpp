#include "KVBaseException.h"

KVBaseException::KVBaseException(const StringBuffer& message) : m_message(message) {}

KVBaseException::KVBaseException(const char* message) : m_message(message) {}

KVBaseException::~KVBaseException() = default;

const char* KVBaseException::what() const noexcept {
    return m_message.str();
}
