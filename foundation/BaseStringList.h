#pragma once

#include "BaseString.h"
#include "PtrList.h"

namespace KV {

// An ordered list of strings; it owns its entries. Only BaseStringList<char> exists.
template <typename C> class BaseStringList {
public:
    // One entry of the list.
    class StringListObject : public BaseString<C> {
    public:
        using BaseString<C>::BaseString;
        StringListObject(const BaseString<C>& s) : BaseString<C>(s) {}
    };

    BaseStringList() = default;
    BaseStringList(const BaseStringList&) = delete;
    BaseStringList& operator=(const BaseStringList&) = delete;
    // Deletes every entry.
    virtual ~BaseStringList();

    int GetCount() const { return entries.GetCount(); }
    // Appends a copy of s; returns its index.
    int Add(const BaseString<C>& s);
    // A copy of the entry at i; empty when there is none.
    BaseString<C> GetAt(int i) const;
    // Appends the pieces of text between separator units. Any run of separators counts as one,
    // so no empty pieces appear; returns how many were added.
    int Split(const BaseString<C>& text, const BaseString<C>& separators);
    // The entries joined with separator between them.
    BaseString<C> Join(const BaseString<C>& separator) const;
    // Deletes every entry.
    void Clear();

private:
    PtrList<StringListObject> entries;
};

extern template class BaseStringList<char>;

} // namespace KV
