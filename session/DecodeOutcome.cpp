#include "DecodeOutcome.h"

DecodedSymbol DecodedSymbol::From(const ZyrSymbolResult& symbol) {
    DecodedSymbol decoded;
    decoded.symbology = symbol.Symbology;
    decoded.orientation = symbol.Orientation;
    decoded.dataType = symbol.DataType;
    decoded.eci = symbol.Eci;
    if (symbol.Data && symbol.DataLength > 0) {
        decoded.bytes.assign(reinterpret_cast<const char*>(symbol.Data), static_cast<size_t>(symbol.DataLength));
    }
    for (size_t i = 0; i < decoded.corners.size(); ++i) {
        decoded.corners[i] = symbol.Corners[i];
    }
    return decoded;
}

bool DecodeOutcome::HasBytes() const {
    for (const DecodedSymbol& symbol : symbols) {
        if (!symbol.bytes.empty()) {
            return true;
        }
    }
    return false;
}

OutcomeStatus DecodeOutcome::Status() const {
    switch (code) {
    case ZYR_OK:
        return HasBytes() ? OutcomeStatus::Read : OutcomeStatus::NoData;
    case ZYR_ERR_PLUGIN_CRASHED:
        return OutcomeStatus::Crashed;
    case ZYR_ERR_PLUGIN_TIMEOUT:
        return OutcomeStatus::TimedOut;
    default:
        return OutcomeStatus::Failed;
    }
}
