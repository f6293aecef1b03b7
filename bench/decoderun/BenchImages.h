// Images for the decode benchmark: a QR code with a known text on a light page, as PNG files.
#pragma once

#include <string>
#include <vector>

// Writes count PNG files into folder ("bench_000.png", ...) and returns their paths; image i
// holds the text BenchText(i).
std::vector<std::string> WriteBenchImages(const std::string& folder, int count);
std::string BenchText(int index);
