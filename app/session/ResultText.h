// How a row shows decoded text. Bytes are shown as the ISO-8859-1 characters of their codes; the
// control codes have no glyph in common fonts and would break the row or vanish, so each is
// spelled out in angle brackets: its ASCII name for C0 codes and DEL ("<LF>", "<RS>", "<DEL>"),
// its two hex digits for the C1 codes 0x80 to 0x9F ("<85>") when the bytes are ISO-8859-1 (in
// UTF-8 those bytes belong to multi-byte characters and stay as they are).
#pragma once

#include <string>

enum class RowBytes { Latin1, Utf8 };

std::string ResultRowText(const std::string& bytes, RowBytes encoding = RowBytes::Latin1);
