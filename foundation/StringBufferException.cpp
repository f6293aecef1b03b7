#include "StringBufferException.h"

StringBufferException::StringBufferException(const StringBuffer& message) : KVBaseException(message) {}

StringBufferException::StringBufferException(const char* message) : KVBaseException(message) {}

StringBufferException::~StringBufferException() = default;
