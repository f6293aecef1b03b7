#include "InterleavedTwoOfFive.h"

#include <algorithm>

namespace example {
namespace {

// Narrow (0) and wide (1) elements of each digit, from the first element on.
const char* const kDigits[10] = {"00110", "10001", "01001", "11000", "00101",
                                 "10100", "01100", "00011", "10010", "01010"};

bool near(int width, double narrow) {
    return width > narrow * 0.5 && width < narrow * 1.6;
}

// The digit whose pattern the five widths follow (the two widest are the wide ones), or -1.
int digitOf(const int* widths, int stride) {
    int order[5] = {0, 1, 2, 3, 4};
    std::sort(order, order + 5, [&](int a, int b) { return widths[a * stride] > widths[b * stride]; });
    // The wide ones must stand clear of the narrow ones.
    if (widths[order[1] * stride] < widths[order[2] * stride] * 3 / 2)
        return -1;
    char pattern[6] = "00000";
    pattern[order[0]] = pattern[order[1]] = '1';
    for (int d = 0; d < 10; ++d)
        if (std::string(kDigits[d]) == pattern)
            return d;
    return -1;
}

bool readFrom(const Runs& runs, size_t start, int minDigits, std::string& digits, int& last) {
    const std::vector<int>& w = runs.widths;
    const double narrow = (w[start] + w[start + 1] + w[start + 2] + w[start + 3]) / 4.0;
    for (size_t i = start; i < start + 4; ++i)
        if (!near(w[i], narrow))
            return false;
    // A quiet zone of ten narrow elements before the start, or the image's edge.
    if (start > 0 && w[start - 1] < narrow * 10)
        return false;
    digits.clear();
    for (size_t i = start + 4; i + 3 <= w.size();) {
        // Stop: a wide bar, a narrow space, a narrow bar, then quiet or the edge.
        const bool quietAfter = i + 3 == w.size() || w[i + 3] >= narrow * 10;
        if (w[i] > narrow * 2 && near(w[i + 1], narrow) && near(w[i + 2], narrow) && quietAfter) {
            last = runs.starts[i + 2] + w[i + 2] - 1;
            return int(digits.size()) >= minDigits;
        }
        if (i + 10 > w.size())
            return false;
        const int bars = digitOf(&w[i], 2), spaces = digitOf(&w[i + 1], 2);
        if (bars < 0 || spaces < 0)
            return false;
        digits += char('0' + bars);
        digits += char('0' + spaces);
        i += 10;
    }
    return false;
}

} // namespace

Runs runsOf(const unsigned char* pixels, int count, int step) {
    Runs runs;
    int low = 255, high = 0;
    for (int i = 0; i < count; ++i) {
        low = std::min<int>(low, pixels[i * step]);
        high = std::max<int>(high, pixels[i * step]);
    }
    if (high - low < 48)
        return runs;
    const int threshold = (low + high) / 2;
    int i = 0;
    while (i < count && pixels[i * step] >= threshold)
        ++i; // the light before the first bar
    if (i > 0) { // kept as the quiet zone before a symbol at the start
        runs.widths.push_back(0);
        runs.starts.push_back(0);
        runs.widths.push_back(i);
        runs.starts.push_back(0);
    }
    while (i < count) {
        const bool dark = pixels[i * step] < threshold;
        const int begin = i;
        while (i < count && (pixels[i * step] < threshold) == dark)
            ++i;
        runs.widths.push_back(i - begin);
        runs.starts.push_back(begin);
    }
    return runs;
}

bool readSymbol(const Runs& runs, int minDigits, std::string& digits, int& first, int& last) {
    // Dark runs are at even positions; a symbol needs its start, a digit pair and its stop.
    for (size_t start = 0; start + 17 <= runs.widths.size(); start += 2) {
        if (runs.widths[start] == 0)
            continue;
        if (readFrom(runs, start, minDigits, digits, last)) {
            first = runs.starts[start];
            return true;
        }
    }
    return false;
}

} // namespace example
