#include "StringBuffer.h"

#include "StringBufferException.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace {

// A counted source may include its terminator; it is not part of the text.
uint32_t countedLength(const char* s, uint32_t n) {
    if (n == 0)
        return 0;
    return s[n - 1] == '\0' ? n - 1 : n;
}

uint32_t cLength(const char* s) {
    return s ? static_cast<uint32_t>(std::strlen(s)) : 0;
}

unsigned char foldAscii(unsigned char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c;
}

} // namespace

StringBuffer::StringBuffer() {
    allocateEmpty();
}

StringBuffer::StringBuffer(const StringBuffer& other) {
    copyFrom(other.m_buffer, other.m_length);
}

StringBuffer::StringBuffer(const char* s, int32_t n) {
    if (!s || (n != -1 && n < 1)) {
        allocateEmpty();
        return;
    }
    const uint32_t length = n == -1 ? cLength(s) : countedLength(s, static_cast<uint32_t>(n));
    copyFrom(s, length);
}

StringBuffer::StringBuffer(const wchar_t* s, int32_t n) {
    if (!s || (n != -1 && n < 1)) {
        allocateEmpty();
        return;
    }
    uint32_t length;
    if (n == -1)
        length = static_cast<uint32_t>(std::wcslen(s));
    else
        length = s[n - 1] == L'\0' ? static_cast<uint32_t>(n - 1) : static_cast<uint32_t>(n);
    char* buffer = new char[length + 1];
    for (uint32_t i = 0; i < length; ++i)
        buffer[i] = static_cast<char>(static_cast<uint32_t>(s[i]) & 0xFFu);
    buffer[length] = '\0';
    m_buffer = buffer;
    m_length = length;
}

StringBuffer::StringBuffer(unsigned long v) {
    std::snprintf(m_convert, sizeof m_convert, "%lu", v);
    CreateFromConstructorBuffer();
}

StringBuffer::StringBuffer(int v) {
    std::snprintf(m_convert, sizeof m_convert, "%d", v);
    CreateFromConstructorBuffer();
}

StringBuffer::StringBuffer(unsigned int v) {
    // Printed through the signed conversion on purpose: callers rely on 0xFFFFFFFF giving "-1".
    std::snprintf(m_convert, sizeof m_convert, "%ld", static_cast<long>(static_cast<int32_t>(v)));
    CreateFromConstructorBuffer();
}

StringBuffer::StringBuffer(char c) {
    m_convert[0] = c;
    m_convert[1] = '\0';
    CreateFromConstructorBuffer();
}

StringBuffer::StringBuffer(float f) {
    std::snprintf(m_convert, sizeof m_convert, "%f", static_cast<double>(f));
    CreateFromConstructorBuffer();
}

StringBuffer::~StringBuffer() {
    delete[] m_buffer;
    m_buffer = nullptr;
}

StringBuffer& StringBuffer::operator=(const StringBuffer& other) {
    if (this != &other)
        rebuild(other.m_buffer, other.m_length, nullptr, 0, nullptr, 0);
    return *this;
}

StringBuffer& StringBuffer::operator=(const char* s) {
    assign(s);
    return *this;
}

StringBuffer& StringBuffer::operator=(char c) {
    const char text[2] = {c, '\0'};
    assign(text);
    return *this;
}

void StringBuffer::assign(const char* s, uint32_t n) {
    if (!s || n == 0) {
        clear();
        return;
    }
    const uint32_t length = countedLength(s, n);
    if (length == m_length) {
        std::memmove(m_buffer, s, length);
        return;
    }
    rebuild(s, length, nullptr, 0, nullptr, 0);
}

void StringBuffer::assign(const char* s) {
    if (!s || *s == '\0') {
        clear();
        return;
    }
    rebuild(s, cLength(s), nullptr, 0, nullptr, 0);
}

void StringBuffer::clear() {
    delete[] m_buffer;
    allocateEmpty();
}

char StringBuffer::operator[](int i) const {
    if (i < 0 || i >= size())
        return '\0';
    return m_buffer[i];
}

void StringBuffer::setChar(uint32_t i, char c) {
    if (i < m_length)
        m_buffer[i] = c;
}

void StringBuffer::append(const char* s, uint32_t n) {
    if (!s || n == 0)
        return;
    rebuild(m_buffer, m_length, s, countedLength(s, n), nullptr, 0);
}

void StringBuffer::append(const char* s) {
    const uint32_t n = cLength(s);
    if (n > 0)
        rebuild(m_buffer, m_length, s, n, nullptr, 0);
}

void StringBuffer::append(const StringBuffer* other) {
    if (other && other->m_length > 0)
        rebuild(m_buffer, m_length, other->m_buffer, other->m_length, nullptr, 0);
}

void StringBuffer::appendNOfChar(uint32_t n, unsigned char c) {
    if (n == 0)
        return;
    char* buffer = new char[m_length + n + 1];
    std::memcpy(buffer, m_buffer, m_length);
    std::memset(buffer + m_length, c, n);
    buffer[m_length + n] = '\0';
    adopt(buffer, m_length + n);
}

StringBuffer& StringBuffer::operator+=(const StringBuffer& other) {
    append(&other);
    return *this;
}

StringBuffer& StringBuffer::operator+=(char c) {
    const char text[2] = {c, '\0'};
    append(text);
    return *this;
}

StringBuffer& StringBuffer::operator<<(const char* s) {
    append(s);
    return *this;
}

StringBuffer& StringBuffer::operator<<(const StringBuffer& other) {
    append(other.m_buffer);
    return *this;
}

StringBuffer& StringBuffer::operator<<(int v) {
    const StringBuffer text(v);
    append(&text);
    return *this;
}

void StringBuffer::insert(uint32_t pos, const char* s, uint32_t n) {
    if (!s || n == 0 || pos > m_length)
        return;
    rebuild(m_buffer, pos, s, countedLength(s, n), m_buffer + pos, m_length - pos);
}

void StringBuffer::erase(int pos, int count) {
    if (pos < 0 || pos >= size() || count <= 0)
        return;
    const uint32_t start = static_cast<uint32_t>(pos);
    uint32_t removed = static_cast<uint32_t>(count);
    if (removed > m_length - start)
        removed = m_length - start;
    rebuild(m_buffer, start, m_buffer + start + removed, m_length - start - removed, nullptr, 0);
}

void StringBuffer::replace_first_of(const char* find, const char* with) {
    const int32_t at = find_first_of(find, 0);
    if (at < 0)
        return;
    const uint32_t pos = static_cast<uint32_t>(at);
    const uint32_t end = pos + cLength(find);
    rebuild(m_buffer, pos, with, cLength(with), m_buffer + end, m_length - end);
}

void StringBuffer::trim() {
    if (m_length == 0)
        return;
    int32_t first = 0;
    while (first < size() && m_buffer[first] == ' ')
        ++first;
    int32_t last = size() - 1;
    while (last >= first && m_buffer[last] == ' ')
        --last;
    trim(first, last);
}

void StringBuffer::trimleft() {
    int32_t first = 0;
    while (first < size() && m_buffer[first] == ' ')
        ++first;
    trim(first, size() - 1);
}

void StringBuffer::trimright() {
    int32_t last = size() - 1;
    while (last >= 0 && m_buffer[last] == ' ')
        --last;
    trim(0, last);
}

void StringBuffer::trim(const char* set) {
    if (m_length == 0)
        return;
    int32_t first = 0;
    while (first < size() && !charInString(m_buffer[first], set))
        ++first;
    int32_t last = size() - 1;
    while (last >= 0 && !charInString(m_buffer[last], set))
        --last;
    trim(first, last);
}

void StringBuffer::trim(int32_t first, int32_t last) {
    if (first == 0 && last == size() - 1)
        return; // nothing to cut: keep the buffer
    if (first < 0 || last >= size() || last < first) {
        clear();
        return;
    }
    rebuild(m_buffer + first, static_cast<uint32_t>(last - first + 1), nullptr, 0, nullptr, 0);
}

int32_t StringBuffer::find_first_of(const char* s, uint32_t start) const {
    if (!s || start > m_length)
        return -1;
    const char* hit = std::strstr(m_buffer + start, s);
    return hit ? static_cast<int32_t>(hit - m_buffer) : -1;
}

int32_t StringBuffer::find_last_of(const char* s) const {
    const uint32_t n = cLength(s);
    if (n == 0)
        return -1; // an empty pattern matches everywhere; there is no last one
    int32_t last = -1;
    for (int32_t hit = find_first_of(s, 0); hit >= 0; hit = find_first_of(s, static_cast<uint32_t>(hit) + n))
        last = hit;
    return last;
}

int StringBuffer::compare(const StringBuffer& other) const {
    const unsigned char* a = reinterpret_cast<const unsigned char*>(m_buffer);
    const unsigned char* b = reinterpret_cast<const unsigned char*>(other.m_buffer);
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    if (*a == *b)
        return 0;
    return *a < *b ? -1 : 1;
}

int StringBuffer::compareIC(const StringBuffer& other) const {
    const unsigned char* a = reinterpret_cast<const unsigned char*>(m_buffer);
    const unsigned char* b = reinterpret_cast<const unsigned char*>(other.m_buffer);
    while (*a != 0 && foldAscii(*a) == foldAscii(*b)) {
        ++a;
        ++b;
    }
    return static_cast<int>(foldAscii(*a)) - static_cast<int>(foldAscii(*b));
}

bool StringBuffer::operator==(const char* s) const {
    const uint32_t n = cLength(s);
    return n == m_length && std::memcmp(m_buffer, s ? s : "", n) == 0;
}

bool StringBuffer::operator==(StringBuffer other) const {
    return other.m_length == m_length && std::memcmp(m_buffer, other.m_buffer, m_length) == 0;
}

bool StringBuffer::StartsWith(const StringBuffer& other) const {
    if (m_length > other.m_length)
        return false;
    // The comparison spans other's length and so takes in this string's terminator: other may be
    // this text plus one NUL, but a byte beyond the terminator is one this string does not have.
    if (other.m_length > m_length + 1)
        return false;
    return std::memcmp(m_buffer, other.m_buffer, other.m_length) == 0;
}

StringBuffer StringBuffer::operator+(const StringBuffer& other) const {
    StringBuffer result(*this);
    result.append(&other);
    return result;
}

StringBuffer StringBuffer::operator+(char c) const {
    StringBuffer result(*this);
    result.appendNOfChar(1, static_cast<unsigned char>(c));
    return result;
}

StringBuffer operator+(const char* s, const StringBuffer& b) {
    StringBuffer result(s);
    result.append(&b);
    return result;
}

StringBuffer StringBuffer::SubString(uint32_t start, uint32_t count) const {
    StringBuffer result;
    SubString(result, start, count);
    return result;
}

void StringBuffer::SubString(StringBuffer& out, uint32_t start, uint32_t count) const {
    if (start >= m_length)
        return;
    const uint32_t available = m_length - start;
    const uint32_t n = count < available ? count : available;
    out.rebuild(m_buffer + start, n, nullptr, 0, nullptr, 0);
}

const StringBuffer& StringBuffer::substr(uint32_t start, uint32_t count) const {
    static StringBuffer shared;
    SubString(shared, start, count);
    return shared;
}

const StringBuffer& StringBuffer::uppercase() const {
    static StringBuffer shared;
    // Built aside first: the receiver may be the shared result itself. NUL bytes are left out, so
    // they are counted first to size the buffer exactly.
    uint32_t length = 0;
    for (uint32_t i = 0; i < m_length; ++i)
        length += m_buffer[i] != '\0' ? 1 : 0;
    char* text = new char[length + 1];
    length = 0;
    for (uint32_t i = 0; i < m_length; ++i) {
        const unsigned char c = static_cast<unsigned char>(m_buffer[i]);
        if (c != 0)
            text[length++] = static_cast<char>((c >= 'a' && c <= 'z') ? c - 32 : c);
    }
    text[length] = '\0';
    shared.adopt(text, length);
    return shared;
}

void StringBuffer::Format(const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    char* text = nullptr;
    uint32_t length = 0;
    vFormat(fmt, args, &text, &length);
    va_end(args);
    // The old text is freed only now, so it may itself be one of the arguments.
    adopt(text, length);
}

StringBuffer StringBuffer::Formatf(const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    char* text = nullptr;
    uint32_t length = 0;
    vFormat(fmt, args, &text, &length);
    va_end(args);
    StringBuffer result;
    result.adopt(text, length);
    return result;
}

void StringBuffer::vFormat(const char* fmt, va_list args, char** out, uint32_t* outLength) {
    int needed = -1;
    if (fmt) {
        va_list counting;
        va_copy(counting, args);
        needed = std::vsnprintf(nullptr, 0, fmt, counting);
        va_end(counting);
    }
    // An encoding error or no format leaves an empty text.
    const uint32_t length = needed > 0 ? static_cast<uint32_t>(needed) : 0;
    char* text = new char[length + 1];
    text[0] = '\0';
    if (length > 0)
        std::vsnprintf(text, length + 1, fmt, args);
    text[length] = '\0';
    *out = text;
    *outLength = length;
}

bool StringBuffer::stringIsInteger() const {
    for (uint32_t i = 0; i < m_length; ++i) {
        const char c = m_buffer[i];
        if (c >= '0' && c <= '9')
            continue;
        if (i == 0 && c == '-')
            continue;
        return false;
    }
    return true;
}

int StringBuffer::toInt() const {
    if (!stringIsInteger())
        throw StringBufferException(StringBuffer("Cannot convert ") + *this + StringBuffer(" to an integer"));
    const long long v = std::strtoll(m_buffer, nullptr, 10);
    if (v > INT_MAX)
        return INT_MAX;
    if (v < INT_MIN)
        return INT_MIN;
    return static_cast<int>(v);
}

int StringBuffer::toIntDef(int def) const {
    try {
        return toInt();
    } catch (const StringBufferException&) {
        return def;
    }
}

void StringBuffer::CreateFromConstructorBuffer() {
    m_convert[sizeof m_convert - 1] = '\0';
    copyFrom(m_convert, cLength(m_convert));
}

void StringBuffer::allocateEmpty() {
    m_buffer = new char[1];
    m_buffer[0] = '\0';
    m_length = 0;
}

bool StringBuffer::charInString(char c, const char* set) {
    if (!set || c == '\0')
        return false;
    for (; *set != '\0'; ++set)
        if (*set == c)
            return true;
    return false;
}

void StringBuffer::rebuild(const char* a, uint32_t na, const char* b, uint32_t nb, const char* c,
                           uint32_t nc) {
    const uint32_t length = na + nb + nc;
    char* buffer = new char[length + 1];
    if (na > 0)
        std::memcpy(buffer, a, na);
    if (nb > 0)
        std::memcpy(buffer + na, b, nb);
    if (nc > 0)
        std::memcpy(buffer + na + nb, c, nc);
    buffer[length] = '\0';
    adopt(buffer, length);
}

void StringBuffer::adopt(char* buffer, uint32_t length) {
    delete[] m_buffer;
    m_buffer = buffer;
    m_length = length;
}

void StringBuffer::copyFrom(const char* s, uint32_t n) {
    m_buffer = new char[n + 1];
    if (n > 0)
        std::memcpy(m_buffer, s, n);
    m_buffer[n] = '\0';
    m_length = n;
}
