#include "JsonValue.h"

#include <cstdlib>
#include <cstring>

namespace {

class Parser {
public:
    explicit Parser(const std::string& text) : m_text(text) {}

    bool Document(JsonValue& value) {
        if (!Value(value, 0)) {
            return false;
        }
        Space();
        return m_pos == m_text.size() || Fail("text after the document");
    }

    std::string Error() const {
        size_t line = 1;
        for (size_t i = 0; i < m_failAt && i < m_text.size(); ++i) {
            line += m_text[i] == '\n';
        }
        return "line " + std::to_string(line) + ": " + m_error;
    }

private:
    bool Fail(const char* reason) {
        if (m_error.empty()) {
            m_error = reason;
            m_failAt = m_pos;
        }
        return false;
    }

    void Space() {
        while (m_pos < m_text.size() && (m_text[m_pos] == ' ' || m_text[m_pos] == '\n' ||
                                         m_text[m_pos] == '\r' || m_text[m_pos] == '\t')) {
            ++m_pos;
        }
    }

    bool Literal(const char* word) {
        const size_t n = std::strlen(word);
        if (m_text.compare(m_pos, n, word) != 0) {
            return Fail("unexpected character");
        }
        m_pos += n;
        return true;
    }

    bool Value(JsonValue& value, int depth) {
        Space();
        if (m_pos >= m_text.size()) {
            return Fail("unexpected end of the document");
        }
        value.begin = m_pos;
        bool ok = false;
        const char c = m_text[m_pos];
        if (c == '{') {
            ok = depth < JsonValue::kMaxDepth ? Object(value, depth + 1) : Fail("nested too deeply");
        } else if (c == '[') {
            ok = depth < JsonValue::kMaxDepth ? Array(value, depth + 1) : Fail("nested too deeply");
        } else if (c == '"') {
            value.type = JsonValue::Type::String;
            ok = String(value.string);
        } else if (c == 't' || c == 'f') {
            value.type = JsonValue::Type::Bool;
            value.boolean = c == 't';
            ok = Literal(c == 't' ? "true" : "false");
        } else if (c == 'n') {
            ok = Literal("null");
        } else {
            ok = Number(value);
        }
        value.end = m_pos;
        return ok;
    }

    bool Number(JsonValue& value) {
        const size_t start = m_pos;
        if (m_pos < m_text.size() && m_text[m_pos] == '-') {
            ++m_pos;
        }
        const size_t digits = m_pos;
        while (m_pos < m_text.size() && std::strchr("0123456789.eE+-", m_text[m_pos]) &&
               m_text[m_pos] != '\0') {
            ++m_pos;
        }
        if (m_pos == digits || m_text[digits] < '0' || m_text[digits] > '9') {
            m_pos = start;
            return Fail("unexpected character");
        }
        const std::string number = m_text.substr(start, m_pos - start);
        char* stop = nullptr;
        value.type = JsonValue::Type::Number;
        value.number = std::strtod(number.c_str(), &stop); // the C locale's decimal point: the writer's
        if (stop != number.c_str() + number.size()) {
            m_pos = start;
            return Fail("malformed number");
        }
        return true;
    }

    static void AppendUtf8(std::string& out, unsigned long code) {
        if (code < 0x80) {
            out += static_cast<char>(code);
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (code >> 18));
            out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }

    bool Hex4(unsigned long& code) {
        if (m_pos + 4 > m_text.size()) {
            return Fail("unexpected end of the document");
        }
        code = 0;
        for (int i = 0; i < 4; ++i) {
            const char c = m_text[m_pos++];
            const int digit = c >= '0' && c <= '9'   ? c - '0'
                              : c >= 'a' && c <= 'f' ? c - 'a' + 10
                              : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                     : -1;
            if (digit < 0) {
                return Fail("bad \\u escape");
            }
            code = code * 16 + static_cast<unsigned long>(digit);
        }
        return true;
    }

    bool String(std::string& out) {
        ++m_pos; // the opening quote
        out.clear();
        while (m_pos < m_text.size()) {
            const size_t plain = m_text.find_first_of("\"\\", m_pos);
            const size_t stop = plain == std::string::npos ? m_text.size() : plain;
            for (size_t i = m_pos; i < stop; ++i) {
                if (static_cast<unsigned char>(m_text[i]) < 0x20) {
                    m_pos = i;
                    return Fail("control character in a string");
                }
            }
            out.append(m_text, m_pos, stop - m_pos);
            m_pos = stop;
            if (m_pos >= m_text.size()) {
                break;
            }
            if (m_text[m_pos++] == '"') {
                return true;
            }
            if (m_pos >= m_text.size()) {
                break;
            }
            const char escape = m_text[m_pos++];
            const char* const from = "\"\\/bfnrt";
            const char* const to = "\"\\/\b\f\n\r\t";
            if (const char* hit = escape ? std::strchr(from, escape) : nullptr) {
                out += to[hit - from];
                continue;
            }
            if (escape != 'u') {
                return Fail("bad escape in a string");
            }
            unsigned long code = 0;
            if (!Hex4(code)) {
                return false;
            }
            if (code >= 0xD800 && code < 0xDC00 && m_text.compare(m_pos, 2, "\\u") == 0) {
                m_pos += 2;
                unsigned long low = 0;
                if (!Hex4(low)) {
                    return false;
                }
                if (low < 0xDC00 || low > 0xDFFF) {
                    return Fail("bad surrogate pair");
                }
                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
            }
            AppendUtf8(out, code);
        }
        return Fail("unterminated string");
    }

    bool Array(JsonValue& value, int depth) {
        value.type = JsonValue::Type::Array;
        ++m_pos;
        Space();
        if (m_pos < m_text.size() && m_text[m_pos] == ']') {
            ++m_pos;
            return true;
        }
        for (;;) {
            value.items.emplace_back();
            if (!Value(value.items.back(), depth)) {
                return false;
            }
            Space();
            if (m_pos >= m_text.size()) {
                return Fail("unexpected end of the document");
            }
            const char c = m_text[m_pos++];
            if (c == ']') {
                return true;
            }
            if (c != ',') {
                --m_pos;
                return Fail("expected ',' or ']'");
            }
        }
    }

    bool Object(JsonValue& value, int depth) {
        value.type = JsonValue::Type::Object;
        ++m_pos;
        Space();
        if (m_pos < m_text.size() && m_text[m_pos] == '}') {
            ++m_pos;
            return true;
        }
        for (;;) {
            Space();
            if (m_pos >= m_text.size() || m_text[m_pos] != '"') {
                return Fail("expected a member name");
            }
            value.members.emplace_back();
            if (!String(value.members.back().first)) {
                return false;
            }
            Space();
            if (m_pos >= m_text.size() || m_text[m_pos] != ':') {
                return Fail("expected ':'");
            }
            ++m_pos;
            if (!Value(value.members.back().second, depth)) {
                return false;
            }
            Space();
            if (m_pos >= m_text.size()) {
                return Fail("unexpected end of the document");
            }
            const char c = m_text[m_pos++];
            if (c == '}') {
                return true;
            }
            if (c != ',') {
                --m_pos;
                return Fail("expected ',' or '}'");
            }
        }
    }

    const std::string& m_text;
    size_t m_pos = 0;
    std::string m_error;
    size_t m_failAt = 0;
};

} // namespace

const JsonValue* JsonValue::Find(const std::string& name) const {
    for (const auto& member : members) {
        if (member.first == name) {
            return &member.second;
        }
    }
    return nullptr;
}

bool JsonValue::Parse(const std::string& text, JsonValue& value, std::string& error) {
    value = JsonValue();
    Parser parser(text);
    if (parser.Document(value)) {
        return true;
    }
    error = parser.Error();
    value = JsonValue();
    return false;
}
