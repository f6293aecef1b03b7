#pragma once

#include "StringBuffer.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#endif

// The bytes of a string, embedded NULs included.
inline std::string Bytes(const StringBuffer& s) { return std::string(s.str(), static_cast<size_t>(s.size())); }

// The buffer ends right after the terminator. Under AddressSanitizer the byte past it is checked
// to be outside the allocation; elsewhere only the terminator can be checked.
inline ::testing::AssertionResult HasExactBuffer(const StringBuffer& s) {
    if (s.str() == nullptr)
        return ::testing::AssertionFailure() << "null buffer";
    if (s.str()[s.size()] != '\0')
        return ::testing::AssertionFailure() << "no terminator at " << s.size();
#if defined(__SANITIZE_ADDRESS__)
    if (__asan_address_is_poisoned(s.str() + s.size()))
        return ::testing::AssertionFailure() << "terminator outside the buffer";
    if (!__asan_address_is_poisoned(s.str() + s.size() + 1))
        return ::testing::AssertionFailure() << "buffer larger than length + 1";
#endif
    return ::testing::AssertionSuccess();
}

