#pragma once

#include <cstdint>

// A growable array of untyped pointers. It never deletes what the pointers refer to: the holder
// deletes the objects, then calls Clear(). Slots from count up to capacity are always null.
class KVPointerList {
public:
    KVPointerList() = default;
    KVPointerList(const KVPointerList&) = delete;
    KVPointerList& operator=(const KVPointerList&) = delete;
    // Frees the array only.
    virtual ~KVPointerList();

    // Appends p (null allowed), growing when full; returns its index.
    int Add(void* p);
    int GetCount() const { return count; }
    int GetCapacity() const { return capacity; }
    // Bounded by the capacity, not the count: null at or beyond the capacity (and for a negative
    // index), items[i] otherwise, which is null from count on.
    void* GetAt(int i) const;
    // Takes out the item at i and closes the gap; null and no change when i is not below count.
    void* RemoveAt(int i);
    // Removes the first slot holding p; its index, or -1 when absent.
    int Remove(void* p);
    // Reallocates to n slots keeping the first min(n, count) pointers; n < 1 drops the array.
    void SetCapacity(int n);
    // Frees the array; count and capacity become 0. The objects are not deleted.
    virtual void Clear();

private:
    void** items = nullptr; // null while the capacity is 0
    int32_t count = 0;
    int32_t capacity = 0;
};
