#pragma once

#include "KVBaseException.h"

// Failures of StringBuffer conversions and of StringBufferList item access and file I/O.
class StringBufferException : public KVBaseException {
public:
    explicit StringBufferException(const StringBuffer& message);
    explicit StringBufferException(const char* message);
    ~StringBufferException() override;
};
