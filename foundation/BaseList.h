#pragma once

#include "Enumerable.h"
#include "KVGrowth.h"
#include "VirtualBaseList.h"

#include <cstdint>
#include <type_traits>

namespace KV {

// The order used when no comparer is given: pointers by their address (so Find means identity),
// other values by < and >. Returns -1, 0 or 1.
template <typename T> int DefaultCompare(const T& a, const T& b) {
    if constexpr (std::is_pointer_v<T>) {
        const auto x = reinterpret_cast<std::uintptr_t>(a);
        const auto y = reinterpret_cast<std::uintptr_t>(b);
        return x < y ? -1 : (x > y ? 1 : 0);
    } else {
        return a < b ? -1 : (b < a ? 1 : 0);
    }
}

// A growable array of T. TArg is how items are passed in, TRet how they are handed out.
// Indexes outside the items are answered with a default T and change nothing.
template <typename T, typename TArg = const T&, typename TRet = T> class BaseList : public VirtualBaseList {
public:
    // Returns a negative number, 0 or a positive number as a orders before, with or after b.
    using Comparer = int (*)(TArg a, TArg b);

    ~BaseList() override { delete[] items; }

    // Frees the array; capacity and count become 0. Items are not deleted.
    virtual void Clear() {
        delete[] items;
        items = nullptr;
        capacity = 0;
        count = 0;
    }
    // Deletes the objects the items refer to, then Clear().
    virtual void DeleteAll() = 0;
    // Enlarges the array by the shared growth rule.
    virtual void Grow() { SetCapacity(KVNextCapacity(capacity)); }
    virtual void SetCapacity(int n) = 0;
    virtual TRet GetAt(int i) const { return InRange(i) ? items[i] : T(); }
    virtual void SetAt(int i, TArg v) {
        if (InRange(i))
            items[i] = v;
    }
    virtual TRet First() const { return GetAt(0); }
    virtual TRet Last() const { return GetAt(count - 1); }
    // Appends v; returns its index.
    virtual int Add(TArg v) {
        if (capacity <= count)
            Grow();
        items[count] = v;
        return count++;
    }
    // Inserts v before position i (clamped to 0..count).
    virtual void InsertAt(int i, TArg v) {
        if (i < 0)
            i = 0;
        if (i > count)
            i = count;
        if (capacity <= count)
            Grow();
        for (int j = count; j > i; --j)
            items[j] = items[j - 1];
        items[i] = v;
        ++count;
    }
    // Takes out the item at i and closes the gap.
    virtual T RemoveAt(int i) {
        if (!InRange(i))
            return T();
        T removed = items[i];
        for (int j = i; j < count - 1; ++j)
            items[j] = items[j + 1];
        items[--count] = T();
        return removed;
    }
    // Removes the first item comparing equal to v; false when there is none.
    virtual bool Remove(TArg v, Comparer compare = nullptr) {
        const int at = Find(v, 0, compare);
        if (at < 0)
            return false;
        RemoveAt(at);
        return true;
    }
    // Index of the first item from start on that compares equal to v, or -1.
    virtual int Find(TArg v, int start = 0, Comparer compare = nullptr) const {
        for (int i = start < 0 ? 0 : start; i < count; ++i)
            if (Compare(compare, items[i], v) == 0)
                return i;
        return -1;
    }
    virtual void Swap(int i, int j) {
        if (!InRange(i) || !InRange(j))
            return;
        T t = items[i];
        items[i] = items[j];
        items[j] = t;
    }
    // Quicksort of the items.
    virtual void Sort(Comparer compare = nullptr) {
        if (count > 1)
            QuickSort(compare, 0, count - 1);
    }
    // A new enumerator over the current items; the caller deletes it.
    virtual Enumerable<T>* GetEnumerator() const = 0;

    int GetCount() const { return count; }
    int GetCapacity() const { return capacity; }

protected:
    bool InRange(int i) const { return i >= 0 && i < count; }

    static int Compare(Comparer compare, const T& a, const T& b) {
        return compare ? compare(a, b) : DefaultCompare<T>(a, b);
    }

    // Middle element as pivot; recursion on the smaller side keeps the stack depth logarithmic.
    void QuickSort(Comparer compare, int low, int high) {
        while (low < high) {
            const T pivot = items[low + (high - low) / 2];
            int i = low;
            int j = high;
            while (i <= j) {
                while (Compare(compare, items[i], pivot) < 0)
                    ++i;
                while (Compare(compare, items[j], pivot) > 0)
                    --j;
                if (i <= j) {
                    T t = items[i];
                    items[i] = items[j];
                    items[j] = t;
                    ++i;
                    --j;
                }
            }
            if (j - low < high - i) {
                QuickSort(compare, low, j);
                low = i;
            } else {
                QuickSort(compare, i, high);
                high = j;
            }
        }
    }

    T* items = nullptr; // capacity slots, unused ones hold T()
    int32_t capacity = 0;
    int32_t count = 0;
};

} // namespace KV
