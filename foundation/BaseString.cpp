#include "BaseString.h"

#include <algorithm>
#include <string>
#include <type_traits>

namespace KV {

namespace {

template <typename C> int MeasureUnits(const C* s) {
    return s ? static_cast<int>(std::char_traits<C>::length(s)) : 0;
}

int Clamp(int v, int low, int high) {
    return v < low ? low : (v > high ? high : v);
}

} // namespace

template <typename C> BaseString<C>::BaseString() {
    Rebuild(nullptr, 0, nullptr, 0, nullptr, 0);
}

template <typename C> BaseString<C>::BaseString(const C* s) {
    Rebuild(s, MeasureUnits(s), nullptr, 0, nullptr, 0);
}

template <typename C> BaseString<C>::BaseString(const C* s, int n) {
    Rebuild(s, (s && n > 0) ? n : 0, nullptr, 0, nullptr, 0);
}

template <typename C> BaseString<C>::BaseString(const BaseString& other) {
    Rebuild(other.buffer, other.length, nullptr, 0, nullptr, 0);
}

template <typename C> BaseString<C>::~BaseString() {
    delete[] buffer;
}

template <typename C> BaseString<C>& BaseString<C>::operator=(const BaseString& other) {
    if (this != &other)
        Rebuild(other.buffer, other.length, nullptr, 0, nullptr, 0);
    return *this;
}

template <typename C> BaseString<C>& BaseString<C>::operator=(const C* s) {
    Rebuild(s, MeasureUnits(s), nullptr, 0, nullptr, 0);
    return *this;
}

template <typename C> void BaseString<C>::Clear() {
    Rebuild(nullptr, 0, nullptr, 0, nullptr, 0);
}

template <typename C> void BaseString<C>::Append(const C* s, int n) {
    const int units = n < 0 ? MeasureUnits(s) : (s ? n : 0);
    if (units > 0)
        Rebuild(buffer, length, s, units, nullptr, 0);
}

template <typename C> void BaseString<C>::Append(const BaseString& other) {
    if (other.length > 0)
        Rebuild(buffer, length, other.buffer, other.length, nullptr, 0);
}

template <typename C> void BaseString<C>::Append(C c) {
    Rebuild(buffer, length, &c, 1, nullptr, 0);
}

template <typename C> BaseString<C>& BaseString<C>::operator+=(const BaseString& other) {
    Append(other);
    return *this;
}

template <typename C> BaseString<C>& BaseString<C>::operator+=(const C* s) {
    Append(s);
    return *this;
}

template <typename C> BaseString<C>& BaseString<C>::operator+=(C c) {
    Append(c);
    return *this;
}

template <typename C> BaseString<C> BaseString<C>::operator+(const BaseString& other) const {
    BaseString result(*this);
    result.Append(other);
    return result;
}

template <typename C> void BaseString<C>::Insert(int pos, const BaseString& s) {
    pos = Clamp(pos, 0, static_cast<int>(length));
    if (s.length > 0)
        Rebuild(buffer, pos, s.buffer, s.length, buffer + pos, length - pos);
}

template <typename C> void BaseString<C>::Remove(int pos, int count) {
    if (pos < 0 || pos >= length || count <= 0)
        return;
    const int removed = std::min(count, static_cast<int>(length) - pos);
    Rebuild(buffer, pos, buffer + pos + removed, length - pos - removed, nullptr, 0);
}

template <typename C> int BaseString<C>::Find(const BaseString& s, int start) const {
    if (start < 0)
        start = 0;
    if (start > length || s.length > length - start)
        return -1;
    const C* end = buffer + length;
    const C* hit = std::search(static_cast<const C*>(buffer + start), end, static_cast<const C*>(s.buffer),
                               static_cast<const C*>(s.buffer + s.length));
    return hit == end && s.length > 0 ? -1 : static_cast<int>(hit - buffer);
}

template <typename C> int BaseString<C>::Find(C c, int start) const {
    for (int i = start < 0 ? 0 : start; i < length; ++i)
        if (buffer[i] == c)
            return i;
    return -1;
}

template <typename C> int BaseString<C>::Replace(const BaseString& find, const BaseString& with) {
    if (find.length == 0)
        return 0;
    // Built in one pass so the text is copied once however many replacements there are.
    BaseString result;
    int made = 0;
    int from = 0;
    for (int hit = Find(find, 0); hit >= 0; hit = Find(find, from)) {
        result.Append(buffer + from, hit - from);
        result.Append(with);
        from = hit + find.length;
        ++made;
    }
    if (made > 0) {
        result.Append(buffer + from, length - from);
        *this = result;
    }
    return made;
}

template <typename C> BaseString<C> BaseString<C>::SubString(int start, int count) const {
    if (start < 0 || start >= length)
        return BaseString();
    const int available = length - start;
    return BaseString(buffer + start, (count < 0 || count > available) ? available : count);
}

template <typename C> int BaseString<C>::Compare(const BaseString& other) const {
    using Unit = std::make_unsigned_t<C>;
    const int common = std::min(length, other.length);
    for (int i = 0; i < common; ++i) {
        const Unit a = static_cast<Unit>(buffer[i]);
        const Unit b = static_cast<Unit>(other.buffer[i]);
        if (a != b)
            return a < b ? -1 : 1;
    }
    return length < other.length ? -1 : (length > other.length ? 1 : 0);
}

template <typename C> bool BaseString<C>::operator==(const BaseString& other) const {
    return length == other.length && std::equal(buffer, buffer + length, other.buffer);
}

template <typename C>
void BaseString<C>::Rebuild(const C* a, int na, const C* b, int nb, const C* c, int nc) {
    const int total = na + nb + nc;
    C* grown = new C[total + 1];
    std::copy(a, a + na, grown);
    std::copy(b, b + nb, grown + na);
    std::copy(c, c + nc, grown + na + nb);
    grown[total] = C(0);
    delete[] buffer;
    buffer = grown;
    length = total;
}

template class BaseString<char>;
template class BaseString<wchar_t>;

} // namespace KV
