// Sees each symbol a decode run attaches to a result, on the thread that decodes, before the
// symbol is released. The window needs none; a front end that reports symbols one by one (the
// result record merges their bytes) registers one.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <cstdint>

class SymbolObserver {
public:
    virtual ~SymbolObserver() = default;
    // imageNumber: the record's image number; symbol is valid only during the call.
    virtual void SymbolAttached(int32_t imageNumber, const ZyrSymbolResult& symbol) = 0;
};
