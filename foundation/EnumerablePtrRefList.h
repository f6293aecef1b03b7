#pragma once

#include "EnumerableList.h"

namespace KV {

// A snapshot of a PtrList's pointers. It refers to the items and never deletes them.
template <typename X> class EnumerablePtrRefList : public EnumerableList<X*> {
public:
    explicit EnumerablePtrRefList(int initialCapacity = 4) : EnumerableList<X*>(initialCapacity) {}
};

} // namespace KV
