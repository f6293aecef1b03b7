#pragma once

#include <cstdarg>
#include <cstdint>

// An 8-bit string value. The heap buffer always holds exactly length + 1 bytes, the last one 0:
// there is no spare capacity, so every change of length reallocates. Bytes are not interpreted
// (no code pages); wide input keeps the low byte of each unit.
//
// Counted sources (the counted constructors, append/insert/assign with a count) drop their last
// byte when it is NUL, so callers may pass a size that includes the terminator. Everything taking
// a plain C string measures it up to its terminator; a null C string counts as empty.
//
// Positions and counts are 32-bit; "not found" is -1. Not thread-safe: substr() and uppercase()
// return shared static results.
class StringBuffer {
public:
    StringBuffer();
    StringBuffer(const StringBuffer& other);
    // n = -1: up to the terminator; n < 1 otherwise: empty; else n bytes less a trailing NUL.
    StringBuffer(const char* s, int32_t n = -1);
    // Same counting in wide units; each unit keeps only its low byte.
    StringBuffer(const wchar_t* s, int32_t n = -1);
    // Decimal text, unsigned.
    StringBuffer(unsigned long v);
    // Decimal text, "-" for negatives.
    StringBuffer(int v);
    // Decimal text of the value read as signed 32-bit: 4294967295 gives "-1".
    StringBuffer(unsigned int v);
    // One character; 0 gives the empty string.
    StringBuffer(char c);
    // "%f": six decimals.
    StringBuffer(float f);
    ~StringBuffer();

    StringBuffer& operator=(const StringBuffer& other);
    StringBuffer& operator=(const char* s);
    StringBuffer& operator=(char c);
    // n = 0 gives the empty string. Reuses the buffer when the new length equals the old one.
    void assign(const char* s, uint32_t n);
    void assign(const char* s);
    void clear();

    // Never null; ends at the text.
    const char* str() const { return m_buffer; }
    int32_t size() const { return static_cast<int32_t>(m_length); }
    bool isEmpty() const { return m_length == 0; }
    // The byte at i, or 0 outside the text.
    char operator[](int i) const;
    // Ignored outside the text.
    void setChar(uint32_t i, char c);

    void append(const char* s, uint32_t n);
    void append(const char* s);
    // Appends all of other's bytes, embedded NULs included.
    void append(const StringBuffer* other);
    void appendNOfChar(uint32_t n, unsigned char c);
    StringBuffer& operator+=(const StringBuffer& other);
    // Appends c as a C string, so 0 appends nothing.
    StringBuffer& operator+=(char c);
    StringBuffer& operator<<(const char* s);
    // Appends other up to its first NUL.
    StringBuffer& operator<<(const StringBuffer& other);
    StringBuffer& operator<<(int v);
    // Inserts before pos; a pos beyond the end inserts nothing.
    void insert(uint32_t pos, const char* s, uint32_t n);
    // Removes count bytes from pos; a count reaching past the end stops at the end.
    void erase(int pos, int count);
    // Replaces the first occurrence of find (substring) with with.
    void replace_first_of(const char* find, const char* with);
    // Space (0x20) only; tabs, CR and LF stay.
    void trim();
    void trimleft();
    void trimright();
    // Keeps the span from the first to the last byte that is in set, inclusive; a string without
    // any such byte becomes empty.
    void trim(const char* set);

    // Substring search (not a character-set search) from start; -1 when absent. The search stops
    // at the first NUL.
    int32_t find_first_of(const char* s, uint32_t start = 0) const;
    // Last occurrence, counting occurrences from the left without overlap; -1 when absent or when
    // s is empty.
    int32_t find_last_of(const char* s) const;
    // Unsigned byte order up to a terminator; exactly -1, 0 or 1.
    int compare(const StringBuffer& other) const;
    // ASCII case folded; the sign is meaningful, the magnitude is not.
    int compareIC(const StringBuffer& other) const;
    bool operator==(const char* s) const;
    bool operator==(StringBuffer other) const;
    // Compares other's length in bytes including this string's terminator, so it holds only when
    // both hold the same text, or other is this text and one NUL.
    bool StartsWith(const StringBuffer& other) const;

    StringBuffer operator+(const StringBuffer& other) const;
    // Adds the byte even when it is 0.
    StringBuffer operator+(char c) const;
    // Up to count bytes from start; empty when start is beyond the text.
    StringBuffer SubString(uint32_t start, uint32_t count) const;
    // Stores the piece into out; out is untouched when start is beyond the text.
    void SubString(StringBuffer& out, uint32_t start, uint32_t count) const;
    // The piece in a static shared by every call, valid until the next substr anywhere. When
    // start is beyond the text, the previous result is returned unchanged.
    const StringBuffer& substr(uint32_t start, uint32_t count) const;
    // C-locale upper case in a second shared static, valid until the next uppercase; 0 bytes are
    // left out.
    const StringBuffer& uppercase() const;

    // Replaces the contents with printf-style output.
    void Format(const char* fmt, ...) __attribute__((format(printf, 2, 3)));
    static StringBuffer Formatf(const char* fmt, ...) __attribute__((format(printf, 1, 2)));

    // Throws StringBufferException "Cannot convert <text> to an integer" unless the text is
    // decimal digits with an optional leading "-". "" and "-" give 0. Out-of-range values
    // saturate at the 32-bit limits.
    int toInt() const;
    int toIntDef(int def) const;

protected:
    // Copies the conversion area up to its terminator into a new exact-size buffer.
    void CreateFromConstructorBuffer();
    void allocateEmpty();
    // Keeps bytes first..last inclusive; an empty or inverted span leaves the empty string.
    void trim(int32_t first, int32_t last);
    static bool charInString(char c, const char* set);
    bool stringIsInteger() const;
    // Formats into a new array (owned by the caller) of exactly *outLength + 1 bytes.
    static void vFormat(const char* fmt, va_list args, char** out, uint32_t* outLength);

private:
    // Replaces the contents with the concatenation of three pieces, which may point into the
    // current buffer (it is freed only after copying).
    void rebuild(const char* a, uint32_t na, const char* b, uint32_t nb, const char* c, uint32_t nc);
    void adopt(char* buffer, uint32_t length);
    void copyFrom(const char* s, uint32_t n);

    char* m_buffer = nullptr; // length + 1 bytes, never null while alive
    uint32_t m_length = 0;
    char m_convert[50]; // scratch for the number and character constructors
};

StringBuffer operator+(const char* s, const StringBuffer& b);
