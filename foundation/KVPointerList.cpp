#include "KVPointerList.h"

#include "KVGrowth.h"

KVPointerList::~KVPointerList() {
    delete[] items;
}

int KVPointerList::Add(void* p) {
    if (capacity <= count)
        SetCapacity(KVNextCapacity(capacity));
    items[count] = p;
    return count++;
}

void* KVPointerList::GetAt(int i) const {
    if (i < 0 || i >= capacity)
        return nullptr;
    return items[i];
}

void* KVPointerList::RemoveAt(int i) {
    if (i < 0 || i >= count)
        return nullptr;
    void* removed = items[i];
    for (int j = i; j < count - 1; ++j)
        items[j] = items[j + 1];
    items[--count] = nullptr;
    return removed;
}

int KVPointerList::Remove(void* p) {
    for (int i = 0; i < count; ++i) {
        if (items[i] == p) {
            RemoveAt(i);
            return i;
        }
    }
    return -1;
}

void KVPointerList::SetCapacity(int n) {
    if (n == capacity)
        return;
    if (n < 1) {
        delete[] items;
        items = nullptr;
        count = 0;
        capacity = 0;
        return;
    }
    void** grown = new void*[n];
    const int kept = count < n ? count : n;
    for (int i = 0; i < kept; ++i)
        grown[i] = items[i];
    for (int i = kept; i < n; ++i)
        grown[i] = nullptr;
    delete[] items;
    items = grown;
    count = kept;
    capacity = n;
}

void KVPointerList::Clear() {
    delete[] items;
    items = nullptr;
    count = 0;
    capacity = 0;
}
