#pragma once

#include "Enumerable.h"
#include "KVGrowth.h"

#include <cstdint>

namespace KV {

// A growable array that enumerates itself. It owns the array, never the items.
template <typename T> class EnumerableList : public Enumerable<T> {
public:
    explicit EnumerableList(int initialCapacity = 0) {
        if (initialCapacity > 0)
            SetCapacity(initialCapacity);
    }
    EnumerableList(const EnumerableList&) = delete;
    EnumerableList& operator=(const EnumerableList&) = delete;
    ~EnumerableList() override { delete[] items; }

    void Reset() override { cursor = 0; }
    bool MoveNext() override {
        ++cursor;
        return HasCurrent();
    }
    bool HasCurrent() const override { return cursor >= 0 && cursor < count; }
    // A default value when there is no current item.
    T Current() const override { return HasCurrent() ? items[cursor] : T(); }

    // Appends v, growing when full; returns its index.
    virtual int Add(T v) {
        if (capacity <= count)
            Grow();
        items[count] = v;
        return count++;
    }
    // Adds every item the other enumerable yields, in order (its cursor is reset and consumed).
    virtual void AddAll(Enumerable<T>& other) {
        if (&other == this) {
            // Enumerating ourselves while adding would never end: copy the current items once.
            const int n = count;
            for (int i = 0; i < n; ++i)
                Add(items[i]);
            return;
        }
        for (other.Reset(); other.HasCurrent(); other.MoveNext())
            Add(other.Current());
    }
    // Adds the first n items of array; n < 1 adds nothing.
    virtual void AddRange(const T* array, int n) {
        for (int i = 0; array && i < n; ++i)
            Add(array[i]);
    }
    virtual void Grow() { SetCapacity(KVNextCapacity(capacity)); }

    int GetCount() const { return count; }
    int GetCapacity() const { return capacity; }

protected:
    void SetCapacity(int n) {
        T* grown = new T[n];
        for (int i = 0; i < n; ++i)
            grown[i] = i < count ? items[i] : T();
        delete[] items;
        items = grown;
        capacity = n;
    }

    T* items = nullptr;
    int32_t capacity = 0;
    int32_t count = 0;
    int32_t cursor = 0;
};

} // namespace KV
