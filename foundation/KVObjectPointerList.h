#pragma once

#include "KVPointerList.h"

// KVPointerList typed to T*. Like its base it owns only the array: the holder deletes the items
// (as their concrete type) and then calls Clear().
template <typename T> class KVObjectPointerList : public KVPointerList {
public:
    // Frees the array only.
    ~KVObjectPointerList() override = default;
    void Clear() override { KVPointerList::Clear(); }
    // Removes the first slot holding item; its index, or -1 when absent.
    virtual int Remove(T* item) { return KVPointerList::Remove(item); }

    int Add(T* item) { return KVPointerList::Add(item); }
    T* GetAt(int i) const { return static_cast<T*>(KVPointerList::GetAt(i)); }
    T* RemoveAt(int i) { return static_cast<T*>(KVPointerList::RemoveAt(i)); }
};
