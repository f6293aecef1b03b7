#include "Decoder.h"

#include "PayloadType.h"

namespace kvdecode {

bool SymbolSink::emit(int32_t symbology, const uint8_t* data, size_t length, int32_t eci,
                      const ZyrPoint (&corners)[4]) {
    if (stopped_)
        return false;
    static const uint8_t empty = 0;
    KVDecodeSymbol symbol{};
    symbol.Symbology = symbology;
    symbol.DataType = payloadType(data, length, eci);
    symbol.Data = data ? data : &empty;
    symbol.DataLength = static_cast<int32_t>(length);
    symbol.Eci = eci;
    for (int i = 0; i < 4; ++i)
        symbol.Corners[i] = corners[i];
    ++count_;
    if (sink_ && sink_(context_, &symbol) != 0)
        stopped_ = true;
    return !stopped_;
}

} // namespace kvdecode
