#pragma once

#include "GreyImage.h"

#include <ZXing/Result.h>

namespace kvdecode {

// Painting a found linear symbol out of an image, so that the next read finds the next symbol.
struct Box {
    int left, top, right, bottom;
    bool overlaps(const Box& o) const {
        return left <= o.right && o.left <= right && top <= o.bottom && o.top <= bottom;
    }
};

// The bounding box of a result's corners.
Box boxOf(const ZXing::Position& p);

// The box a linear symbol covers: zxing gives the lines it read, so the box grows across the bars
// while the scan lines still cross about as many bar edges, plus a margin.
Box symbolBox(const GreyImage& grey, const ZXing::Position& p);

// Fills the box with white.
void paintLight(GreyImage& grey, const Box& box);

} // namespace kvdecode
