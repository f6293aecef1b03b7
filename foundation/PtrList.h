#pragma once

#include "BaseList.h"
#include "EnumerablePtrRefList.h"

namespace KV {

// A list of pointers whose objects the holder owns: DeleteAll() deletes them, while Clear() and
// the destructor free only the array.
template <typename X> class PtrList : public BaseList<X*, X*, X*> {
    using Base = BaseList<X*, X*, X*>;

public:
    void DeleteAll() override {
        for (int i = 0; i < this->count; ++i)
            delete this->items[i];
        this->Clear();
    }
    // Reallocates to n slots (n > 0, n different from the capacity), keeping the first
    // min(n, count) pointers; the other slots are null.
    void SetCapacity(int n) override {
        if (n <= 0 || n == this->capacity)
            return;
        X** grown = new X*[n];
        const int kept = this->count < n ? this->count : n;
        for (int i = 0; i < n; ++i)
            grown[i] = i < kept ? this->items[i] : nullptr;
        delete[] this->items;
        this->items = grown;
        this->capacity = n;
        this->count = kept;
    }
    EnumerablePtrRefList<X>* GetEnumerator() const override {
        auto* snapshot = new EnumerablePtrRefList<X>(4);
        snapshot->AddRange(this->items, this->count);
        return snapshot;
    }
};

} // namespace KV
