#include "DecodeRun.h"

#include <chrono>
#include <cstring>

namespace plugincheck {
namespace {

void copySymbol(void* context, int32_t, int32_t, int32_t, const ZyrSymbolResult* symbol) {
    auto* symbols = static_cast<std::vector<SymbolCopy>*>(context);
    if (!symbol)
        return;
    SymbolCopy copy;
    copy.symbology = symbol->Symbology;
    copy.dataType = symbol->DataType;
    copy.eci = symbol->Eci;
    copy.length = symbol->DataLength;
    if (symbol->Data && symbol->DataLength >= 0) {
        copy.bytes.assign(reinterpret_cast<const char*>(symbol->Data), size_t(symbol->DataLength));
        copy.terminated = symbol->Data[symbol->DataLength] == 0;
    }
    std::memcpy(copy.corners, symbol->Corners, sizeof copy.corners);
    symbols->push_back(std::move(copy));
    ZyrReader_DestroyCachedObject(symbol);
}

} // namespace

bool SymbolCopy::operator==(const SymbolCopy& other) const {
    return symbology == other.symbology && dataType == other.dataType && eci == other.eci &&
           bytes == other.bytes && std::memcmp(corners, other.corners, sizeof corners) == 0;
}

int32_t LoadedPlugin::load(const std::string& pluginPath, const std::string& settingsPath) {
    return ZyrReader_ImagePluginLoad(pluginPath.c_str(), settingsPath.c_str(), &handle_, 0);
}

Decoded LoadedPlugin::decode(const CheckImage& image) const {
    Decoded decoded;
    const auto start = std::chrono::steady_clock::now();
    decoded.result = ZyrReader_ImagePluginDecode(true, handle_, image.view(), "", 0, "", copySymbol,
                                                 &decoded.symbols, 0, 0, 0);
    decoded.milliseconds =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    return decoded;
}

std::string resultText(int32_t result) {
    if (result == ZYR_OK)
        return "OK";
    return std::string(ZyrReader_ErrorText(result)) + " (" + std::to_string(result) + ")";
}

} // namespace plugincheck
