#pragma once

#include <cstdint>

namespace KV {

// A string of C units with an explicit length (embedded NULs allowed) in an exact-size,
// terminated buffer. Only BaseString<char> and BaseString<wchar_t> exist.
// Positions are unit offsets; "not found" is -1. Out-of-range positions are clamped or answered
// with 0 / empty, never undefined.
template <typename C> class BaseString {
public:
    BaseString();
    // Up to the terminator; null gives the empty string.
    BaseString(const C* s);
    // n units (n < 1 or null gives the empty string).
    BaseString(const C* s, int n);
    BaseString(const BaseString& other);
    virtual ~BaseString();

    BaseString& operator=(const BaseString& other);
    BaseString& operator=(const C* s);

    // Never null; ends at the text.
    const C* GetBuffer() const { return buffer; }
    const C* c_str() const { return buffer; }
    int Length() const { return length; }
    bool IsEmpty() const { return length == 0; }
    // The unit at i, or 0 outside the text.
    C operator[](int i) const { return (i >= 0 && i < length) ? buffer[i] : C(0); }

    void Clear();
    // n = -1: up to the terminator.
    void Append(const C* s, int n = -1);
    void Append(const BaseString& other);
    void Append(C c);
    BaseString& operator+=(const BaseString& other);
    BaseString& operator+=(const C* s);
    BaseString& operator+=(C c);
    BaseString operator+(const BaseString& other) const;
    // Inserts before pos (clamped to 0..length).
    void Insert(int pos, const BaseString& s);
    // Removes up to count units from pos.
    void Remove(int pos, int count);

    // First occurrence of s at or after start, or -1. The whole length is searched, NULs included.
    int Find(const BaseString& s, int start = 0) const;
    int Find(C c, int start = 0) const;
    // Replaces every occurrence of find, left to right, resuming after the inserted text (so the
    // replacement is never searched again); returns the number made. An empty find does nothing.
    int Replace(const BaseString& find, const BaseString& with);
    // Up to count units from start (count < 0: to the end); empty when start is outside.
    BaseString SubString(int start, int count = -1) const;

    // Unit-wise order (as unsigned units), then by length: -1, 0 or 1.
    int Compare(const BaseString& other) const;
    bool operator==(const BaseString& other) const;
    bool operator!=(const BaseString& other) const { return !(*this == other); }
    bool operator==(const C* s) const { return *this == BaseString(s); }
    bool operator!=(const C* s) const { return !(*this == BaseString(s)); }

private:
    // Replaces the contents with three pieces, which may point into the current buffer.
    void Rebuild(const C* a, int na, const C* b, int nb, const C* c, int nc);

    C* buffer = nullptr; // length + 1 units, last one 0
    int32_t length = 0;
};

template <typename C> BaseString<C> operator+(const C* s, const BaseString<C>& b) {
    BaseString<C> result(s);
    result += b;
    return result;
}

extern template class BaseString<char>;
extern template class BaseString<wchar_t>;

} // namespace KV
