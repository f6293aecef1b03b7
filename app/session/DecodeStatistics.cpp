#include "DecodeStatistics.h"

#include <cstdio>

namespace {

std::string Printf(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string Average(uint32_t total, int32_t count) {
    // Both averages divide by the decode count; none yet reads as 0.00.
    return Printf("%.2fms", count > 0 ? static_cast<double>(total) / count : 0.0);
}

} // namespace

DecodeStatistics::Texts DecodeStatistics::Format() const {
    const int32_t decodes = decodeCount.load();
    Texts texts;
    texts.averageTime = Average(totalDecodeMs.load(), decodes);
    texts.imageCount = std::to_string(imageCount.load());
    texts.symbolsCount = std::to_string(symbolsCount.load());
    texts.averageImageProcessTime = Average(totalImageProcessMs.load(), decodes);
    return texts;
}

void DecodeStatistics::Clear() {
    symbolsCount = 0;
    decodeCount = 0;
    imageCount = 0;
    totalDecodeMs = 0;
    totalImageProcessMs = 0;
}
