#pragma once

#include "BaseString.h"
#include "XDocumentBase.h"

#include <string>

using XString = KV::BaseString<char>;
using XDocument = KV::XLib::XDocumentBase<char>;
using XElement = KV::XLib::XElementBase<char>;
using XAttribute = KV::XLib::XAttributeBase<char>;

inline XString X(const std::string& text) { return XString(text.c_str(), static_cast<int>(text.size())); }

inline std::string Std(const XString& text) {
    return std::string(text.GetBuffer(), static_cast<size_t>(text.Length()));
}
