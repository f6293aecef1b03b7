#pragma once

namespace KV {
namespace XLib {

// How the XML writer lays out a document. The defaults are those of ToString() and the
// one-argument SaveToFile().
struct XWriteOptions {
    bool noLineBreaks = false;  // true: no CR LF is written anywhere
    bool indentWithTabs = true; // true: each element line starts with one TAB per level of depth
    char32_t quote = U'"';      // encloses attribute values and the declaration's version
};

} // namespace XLib
} // namespace KV
