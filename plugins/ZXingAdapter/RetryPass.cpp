#include "RetryPass.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace kvdecode {

bool parseBinarizer(const std::string& name, ZXing::Binarizer& out) {
    using B = ZXing::Binarizer;
    const std::pair<const char*, B> names[] = {{"LocalAverage", B::LocalAverage},
                                               {"GlobalHistogram", B::GlobalHistogram},
                                               {"FixedThreshold", B::FixedThreshold},
                                               {"BoolCast", B::BoolCast}};
    for (const auto& [text, value] : names)
        if (name == text) {
            out = value;
            return true;
        }
    return false;
}

bool parseRetryPass(const std::string& text, RetryPass& out) {
    std::string rest = text;
    RetryPass pass;
    const std::string down = "+Downscale";
    if (rest.size() > down.size() && rest.compare(rest.size() - down.size(), down.size(), down) == 0) {
        pass.downscale = true;
        rest.resize(rest.size() - down.size());
    }
    const size_t at = rest.find('@');
    if (at != std::string::npos) {
        const std::string number = rest.substr(at + 1);
        errno = 0;
        char* end = nullptr;
        pass.degrees = std::strtod(number.c_str(), &end);
        if (number.empty() || errno != 0 || *end != '\0' || std::fabs(pass.degrees) > 45)
            return false;
        rest.resize(at);
    }
    if (!parseBinarizer(rest, pass.binarizer))
        return false;
    out = pass;
    return true;
}

TurnedImage::TurnedImage(const GreyImage& grey, double degrees)
    : width_(grey.width()), height_(grey.height()), cos_(std::cos(degrees * M_PI / 180)),
      sin_(std::sin(degrees * M_PI / 180)), pixels_(size_t(width_) * size_t(height_), 255) {
    const double cx = width_ / 2.0, cy = height_ / 2.0;
    for (int y = 0; y < height_; ++y) {
        // Each pixel takes the original's pixel that turns onto it.
        double sx = -cos_ * cx + sin_ * (y - cy) + cx;
        double sy = sin_ * cx + cos_ * (y - cy) + cy;
        uint8_t* row = pixels_.data() + size_t(y) * size_t(width_);
        for (int x = 0; x < width_; ++x, sx += cos_, sy -= sin_) {
            const int ix = int(std::lround(sx)), iy = int(std::lround(sy));
            if (ix >= 0 && iy >= 0 && ix < width_ && iy < height_)
                row[x] = grey.data()[size_t(iy) * size_t(width_) + size_t(ix)];
        }
    }
}

ZXing::PointI TurnedImage::original(ZXing::PointI p) const {
    const double cx = width_ / 2.0, cy = height_ / 2.0, dx = p.x - cx, dy = p.y - cy;
    return {int(std::lround(cos_ * dx + sin_ * dy + cx)), int(std::lround(-sin_ * dx + cos_ * dy + cy))};
}

} // namespace kvdecode
