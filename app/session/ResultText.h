// How a row shows decoded text. Bytes are shown as the ISO-8859-1 characters of their codes; the
// control codes have no glyph in common fonts and would break the row or vanish, so each is
// spelled out in angle brackets: its ASCII name for C0 codes and DEL ("<LF>", "<RS>", "<DEL>"),
// its two hex digits for the C1 codes 0x80 to 0x9F ("<85>").
#pragma once

#include <string>

std::string ResultRowText(const std::string& bytes);
