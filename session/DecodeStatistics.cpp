#include "DecodeStatistics.h"

#include <cstdio>

namespace {

std::string Printf(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// Both averages divide by the decode count; none yet reads as 0.
double Average(uint32_t total, int32_t count) {
    return count > 0 ? static_cast<double>(total) / count : 0.0;
}

} // namespace

DecodeStatistics::Values DecodeStatistics::Read() const {
    const int32_t decodes = decodeCount.load();
    Values values;
    values.averageTimeMs = Average(totalDecodeMs.load(), decodes);
    values.imageCount = imageCount.load();
    values.symbolsCount = symbolsCount.load();
    values.averageImageProcessMs = Average(totalImageProcessMs.load(), decodes);
    return values;
}

DecodeStatistics::Texts DecodeStatistics::Format(const Values& values) {
    Texts texts;
    texts.averageTime = Printf("%.2fms", values.averageTimeMs);
    texts.imageCount = std::to_string(values.imageCount);
    texts.symbolsCount = std::to_string(values.symbolsCount);
    texts.averageImageProcessTime = Printf("%.2fms", values.averageImageProcessMs);
    return texts;
}

void DecodeStatistics::Clear() {
    symbolsCount = 0;
    decodeCount = 0;
    imageCount = 0;
    totalDecodeMs = 0;
    totalImageProcessMs = 0;
}
