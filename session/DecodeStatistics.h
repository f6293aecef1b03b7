// Counters of a test session and the texts of the statistics line. Written by the running job,
// read by the user-interface thread, hence atomic.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

class DecodeStatistics {
public:
    struct Texts {
        std::string averageTime;             // total decode time / decode count, "%.2fms"
        std::string imageCount;              // "%d"
        std::string symbolsCount;            // "%d"
        std::string averageImageProcessTime; // total image-process time / decode count, "%.2fms"
    };

    // The line's values: averages in milliseconds, with fractions.
    struct Values {
        double averageTimeMs = 0;
        int32_t imageCount = 0;
        int32_t symbolsCount = 0;
        double averageImageProcessMs = 0;
    };

    std::atomic<int32_t> symbolsCount{0};
    std::atomic<int32_t> decodeCount{0};
    std::atomic<int32_t> imageCount{0};
    std::atomic<uint32_t> totalDecodeMs{0};
    std::atomic<uint32_t> lastImageProcessMs{0};
    std::atomic<uint32_t> totalImageProcessMs{0};

    Values Read() const;
    static Texts Format(const Values& values);
    Texts Format() const { return Format(Read()); }

    // Clear Results: everything but the last image-process time goes back to zero.
    void Clear();

    // Text shown for a value that has been cleared.
    static constexpr const char* kClearedText = "-";
};
