#pragma once

#include "GreyImage.h"

#include <ZXing/DecodeHints.h>
#include <ZXing/Point.h>

#include <string>
#include <vector>

namespace kvdecode {

// A further read when the earlier ones found nothing: another binarizer, downscaling, or the image
// turned by a few degrees (zxing-cpp 1.4 misses PDF417 tilted by about 3 degrees).
struct RetryPass {
    ZXing::Binarizer binarizer = ZXing::Binarizer::LocalAverage;
    double degrees = 0;
    bool downscale = false;
};

// LocalAverage, GlobalHistogram, FixedThreshold or BoolCast.
bool parseBinarizer(const std::string& name, ZXing::Binarizer& out);

// "FixedThreshold", "FixedThreshold@-3" (turned 3 degrees anticlockwise), "LocalAverage+Downscale".
bool parseRetryPass(const std::string& text, RetryPass& out);

// A grey image turned clockwise about its centre, same size (nearest pixel, white outside), and
// the way back to the original's coordinates.
class TurnedImage {
public:
    TurnedImage(const GreyImage& grey, double degrees);

    int width() const { return width_; }
    int height() const { return height_; }
    const uint8_t* data() const { return pixels_.data(); }
    ZXing::PointI original(ZXing::PointI p) const;

private:
    int width_, height_;
    double cos_, sin_;
    std::vector<uint8_t> pixels_;
};

} // namespace kvdecode
