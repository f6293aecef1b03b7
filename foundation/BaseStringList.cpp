#include "BaseStringList.h"

namespace KV {

template <typename C> BaseStringList<C>::~BaseStringList() {
    entries.DeleteAll();
}

template <typename C> int BaseStringList<C>::Add(const BaseString<C>& s) {
    return entries.Add(new StringListObject(s));
}

template <typename C> BaseString<C> BaseStringList<C>::GetAt(int i) const {
    const StringListObject* entry = entries.GetAt(i);
    return entry ? BaseString<C>(*entry) : BaseString<C>();
}

template <typename C>
int BaseStringList<C>::Split(const BaseString<C>& text, const BaseString<C>& separators) {
    if (text.IsEmpty() || separators.IsEmpty())
        return 0;
    int added = 0;
    int start = -1; // start of the current piece, -1 between pieces
    for (int i = 0; i <= text.Length(); ++i) {
        const bool boundary = i == text.Length() || separators.Find(text[i]) >= 0;
        if (!boundary && start < 0)
            start = i;
        if (boundary && start >= 0) {
            Add(text.SubString(start, i - start));
            ++added;
            start = -1;
        }
    }
    return added;
}

template <typename C> BaseString<C> BaseStringList<C>::Join(const BaseString<C>& separator) const {
    BaseString<C> joined;
    for (int i = 0; i < entries.GetCount(); ++i) {
        if (i > 0)
            joined += separator;
        joined += *entries.GetAt(i);
    }
    return joined;
}

template <typename C> void BaseStringList<C>::Clear() {
    entries.DeleteAll();
}

template class BaseStringList<char>;

} // namespace KV
