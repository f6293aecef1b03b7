#include "TextEncoding.h"

#include <cstdint>
#include <cstdio>

namespace {

// Length of the valid UTF-8 sequence at text[i] with its code point, or 0 when none starts there.
size_t Utf8Sequence(const std::string& text, size_t i, uint32_t& code) {
    const auto byte = [&](size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned char lead = byte(i);
    size_t length = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        code = lead & 0x1Fu;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        code = lead & 0x0Fu;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        code = lead & 0x07u;
    } else {
        return 0;
    }
    if (i + length > text.size()) {
        return 0;
    }
    for (size_t k = 1; k < length; ++k) {
        if ((byte(i + k) & 0xC0u) != 0x80u) {
            return 0;
        }
        code = code << 6 | (byte(i + k) & 0x3Fu);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return overlong || surrogate || code > 0x10FFFF ? 0 : length;
}

void AppendJsonUnit(std::string& out, uint32_t unit) {
    char escape[16];
    std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(unit));
    out += escape;
}

void AppendJsonCharacter(std::string& out, uint32_t code) {
    switch (code) {
    case '"':
        out += "\\\"";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        break;
    }
    if (code >= 0x20 && code < 0x7F) {
        out += static_cast<char>(code);
    } else if (code < 0x10000) {
        AppendJsonUnit(out, code);
    } else {
        const uint32_t value = code - 0x10000;
        AppendJsonUnit(out, 0xD800 + (value >> 10));
        AppendJsonUnit(out, 0xDC00 + (value & 0x3FF));
    }
}

} // namespace

std::string TextEncoding::Base64(const std::string& bytes) {
    static const char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    size_t i = 0;
    for (; i + 3 <= bytes.size(); i += 3) {
        const uint32_t v = uint32_t(static_cast<unsigned char>(bytes[i])) << 16 |
                           uint32_t(static_cast<unsigned char>(bytes[i + 1])) << 8 |
                           uint32_t(static_cast<unsigned char>(bytes[i + 2]));
        out += kAlphabet[v >> 18];
        out += kAlphabet[(v >> 12) & 63];
        out += kAlphabet[(v >> 6) & 63];
        out += kAlphabet[v & 63];
    }
    const size_t rest = bytes.size() - i;
    if (rest > 0) {
        uint32_t v = uint32_t(static_cast<unsigned char>(bytes[i])) << 16;
        if (rest == 2) {
            v |= uint32_t(static_cast<unsigned char>(bytes[i + 1])) << 8;
        }
        out += kAlphabet[v >> 18];
        out += kAlphabet[(v >> 12) & 63];
        out += rest == 2 ? kAlphabet[(v >> 6) & 63] : '=';
        out += '=';
    }
    return out;
}

std::string TextEncoding::Latin1ToUtf8(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            out += c;
        } else {
            out += static_cast<char>(0xC0 | (byte >> 6));
            out += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return out;
}

std::string TextEncoding::TableText(const std::string& text, bool latin1) {
    std::string escaped;
    for (const char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        switch (byte) {
        case '\r':
            escaped += "\\r";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\t':
            escaped += "\\t";
            break;
        case 0:
            escaped += "\\0";
            break;
        default:
            if (byte < 0x20 || byte == 0x7F) {
                char hex[8];
                std::snprintf(hex, sizeof hex, "\\x%02X", byte);
                escaped += hex;
            } else {
                escaped += c;
            }
        }
    }
    return latin1 ? Latin1ToUtf8(escaped) : escaped;
}

size_t TextEncoding::DisplayWidth(const std::string& utf8) {
    size_t width = 0;
    for (const char c : utf8) {
        width += (static_cast<unsigned char>(c) & 0xC0u) != 0x80u ? 1 : 0;
    }
    return width;
}

std::string TextEncoding::JsonString(const std::string& text, bool latin1) {
    std::string out = "\"";
    for (size_t i = 0; i < text.size();) {
        uint32_t code = 0;
        const size_t length = latin1 ? 0 : Utf8Sequence(text, i, code);
        if (length > 0) {
            AppendJsonCharacter(out, code);
            i += length;
        } else {
            AppendJsonCharacter(out, static_cast<unsigned char>(text[i]));
            ++i;
        }
    }
    out += '"';
    return out;
}

std::string TextEncoding::CsvField(const std::string& text) {
    const bool quote = text.find_first_of(",\"\r\n") != std::string::npos ||
                       (!text.empty() && (text.front() == ' ' || text.back() == ' '));
    if (!quote) {
        return text;
    }
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"') {
            out += '"';
        }
        out += c;
    }
    out += '"';
    return out;
}
