#include "Thumbnail.h"

#include "ImageFileLoader.h"
#include "imagecodec/PngWriter.h"

#include <algorithm>
#include <vector>

bool Thumbnail::Make(const std::string& path, int maxSide, Thumbnail& thumbnail, std::string& error) {
    const std::shared_ptr<const ZyrImage> image = ImageFileLoader::Load(path, error);
    if (!image) {
        return false;
    }
    const int channels = image->PixelFormat == ZYR_PIXEL_RGB24 ? 3 : 1;
    const int w = image->Width, h = image->Height;
    const double scale = std::min(1.0, static_cast<double>(maxSide) / std::max(w, h));
    const int tw = std::max(1, static_cast<int>(w * scale)), th = std::max(1, static_cast<int>(h * scale));
    std::vector<uint8_t> pixels(static_cast<size_t>(tw) * th * channels);
    // Each thumbnail pixel averages the source pixels it covers.
    for (int ty = 0; ty < th; ++ty) {
        const int y0 = static_cast<int>(static_cast<long>(ty) * h / th);
        const int y1 = std::max(y0 + 1, static_cast<int>(static_cast<long>(ty + 1) * h / th));
        for (int tx = 0; tx < tw; ++tx) {
            const int x0 = static_cast<int>(static_cast<long>(tx) * w / tw);
            const int x1 = std::max(x0 + 1, static_cast<int>(static_cast<long>(tx + 1) * w / tw));
            for (int c = 0; c < channels; ++c) {
                unsigned long sum = 0;
                for (int y = y0; y < y1; ++y) {
                    const uint8_t* row = image->Pixels + static_cast<size_t>(y) * image->Stride;
                    for (int x = x0; x < x1; ++x) {
                        sum += row[x * channels + c];
                    }
                }
                const unsigned long count = static_cast<unsigned long>(y1 - y0) * (x1 - x0);
                pixels[(static_cast<size_t>(ty) * tw + tx) * channels + c] =
                    static_cast<uint8_t>(sum / count);
            }
        }
    }
    std::vector<uint8_t> png;
    const zyr::PixelLayout layout = channels == 3 ? zyr::PixelLayout::RGB : zyr::PixelLayout::Grey8;
    if (zyr::PngWriter::encode(tw, th, layout, pixels.data(), tw * channels, png) != ZYR_OK) {
        error = "cannot encode a thumbnail";
        return false;
    }
    thumbnail.width = w;
    thumbnail.height = h;
    thumbnail.thumbWidth = tw;
    thumbnail.thumbHeight = th;
    thumbnail.png.assign(png.begin(), png.end());
    return true;
}
