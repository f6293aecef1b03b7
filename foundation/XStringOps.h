#pragma once

#include "BaseString.h"

#include <string>

// The few string operations the XML classes need, in one place.
namespace KV {
namespace XLib {
namespace detail {

template <typename C> std::basic_string<C> ToStd(const BaseString<C>& s) {
    return std::basic_string<C>(s.GetBuffer(), static_cast<size_t>(s.GetLength()));
}

template <typename C> BaseString<C> FromStd(const std::basic_string<C>& s) {
    return BaseString<C>(s.c_str(), static_cast<int>(s.size()));
}

// Widens an ASCII literal to the character type.
template <typename C> std::basic_string<C> Lit(const char* ascii) {
    std::basic_string<C> out;
    for (; *ascii; ++ascii)
        out.push_back(static_cast<C>(*ascii));
    return out;
}

template <typename C> void Append(BaseString<C>& out, const std::basic_string<C>& piece) {
    out = FromStd(ToStd(out) + piece);
}

template <typename C> bool Equals(const BaseString<C>& a, const BaseString<C>& b) { return ToStd(a) == ToStd(b); }

} // namespace detail
} // namespace XLib
} // namespace KV
