#include "ResultWriter.h"

std::vector<std::string> ResultWriter::StatisticsLines(const DecodeStatistics::Values& values) {
    const DecodeStatistics::Texts statistics = DecodeStatistics::Format(values);
    return {"Average Time: " + statistics.averageTime, "Image Count: " + statistics.imageCount,
            "Symbols Count: " + statistics.symbolsCount,
            "Average Image Process Time: " + statistics.averageImageProcessTime};
}
