#include "imagecodec/PngDecoder.h"

#include "ZyrReaderLowLevelAPI.h"
#include "imagecodec/RowConverter.h"

#include <png.h>

#include <csetjmp>
#include <cstring>
#include <vector>

namespace zyr {
namespace {

// Everything libpng's callbacks touch; plain data, so a longjmp over it is harmless.
struct PngSource {
    const uint8_t* data;
    size_t size;
    size_t position;
};

void readFromMemory(png_structp png, png_bytep out, png_size_t length) {
    auto* source = static_cast<PngSource*>(png_get_io_ptr(png));
    if (length > source->size - source->position)
        png_error(png, "truncated");
    std::memcpy(out, source->data + source->position, length);
    source->position += length;
}

void onError(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}
void onWarning(png_structp, png_const_charp) {}

// Owns libpng's read structures for one decode.
class PngReader {
public:
    PngReader(const uint8_t* data, size_t size) : source_{data, size, 0} {
        png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
        if (png_ != nullptr)
            info_ = png_create_info_struct(png_);
    }
    ~PngReader() { png_destroy_read_struct(&png_, info_ != nullptr ? &info_ : nullptr, nullptr); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    bool valid() const { return png_ != nullptr && info_ != nullptr; }

    // Header and transforms: on return, the row format libpng will deliver is known.
    // Only plain data lives in this frame, so libpng may longjmp out of it.
    bool readHeader(bool bgr) {
        if (setjmp(png_jmpbuf(png_)))
            return false;
        png_set_read_fn(png_, &source_, readFromMemory);
        png_read_info(png_, info_);
        width_ = png_get_image_width(png_, info_);
        height_ = png_get_image_height(png_, info_);
        colourType_ = png_get_color_type(png_, info_);
        transparency_ = png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
        if (!transforms_)
            return true;
        png_set_expand(png_); // palette -> RGB, grey 1/2/4 -> 8, tRNS -> alpha
        png_set_strip_16(png_);
        if (bgr)
            png_set_bgr(png_);
        png_set_interlace_handling(png_);
        png_read_update_info(png_, info_);
        channels_ = png_get_channels(png_, info_);
        return true;
    }

    bool readRows(uint8_t* const* rows) {
        if (setjmp(png_jmpbuf(png_)))
            return false;
        png_read_image(png_, const_cast<png_bytepp>(rows));
        return true;
    }

    void enableTransforms() { transforms_ = true; }
    png_uint_32 width() const { return width_; }
    png_uint_32 height() const { return height_; }
    int colourType() const { return colourType_; }
    bool transparency() const { return transparency_; }
    int channels() const { return channels_; }

private:
    PngSource source_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    png_uint_32 width_ = 0;
    png_uint_32 height_ = 0;
    int colourType_ = 0;
    int channels_ = 0;
    bool transparency_ = false;
    bool transforms_ = false;
};

int32_t checkSize(png_uint_32 width, png_uint_32 height) {
    if (width == 0 || height == 0)
        return ZYR_ERR_CORRUPT_IMAGE;
    if (width > kMaxImageDimension || height > kMaxImageDimension ||
        int64_t(width) * int64_t(height) > kMaxImagePixels)
        return ZYR_ERR_UNSUPPORTED_IMAGE;
    return ZYR_OK;
}

} // namespace

bool PngDecoder::hasSignature(const uint8_t* data, size_t size) {
    return size >= 8 && png_sig_cmp(data, 0, 8) == 0;
}

int32_t PngDecoder::readInfo(const uint8_t* data, size_t size, ImageInfo& info) {
    PngReader reader(data, size);
    if (!reader.valid())
        return ZYR_ERR_OUT_OF_MEMORY;
    if (!reader.readHeader(false))
        return ZYR_ERR_CORRUPT_IMAGE;
    if (const int32_t sizeCheck = checkSize(reader.width(), reader.height()))
        return sizeCheck;
    info.type = ImageFileType::Png;
    info.width = static_cast<int32_t>(reader.width());
    info.height = static_cast<int32_t>(reader.height());
    info.colour = (reader.colourType() & PNG_COLOR_MASK_COLOR) != 0;
    info.alpha = (reader.colourType() & PNG_COLOR_MASK_ALPHA) != 0 || reader.transparency();
    return ZYR_OK;
}

int32_t PngDecoder::decode(const uint8_t* data, size_t size, PixelLayout layout, uint8_t* const* rows) {
    PngReader reader(data, size);
    if (!reader.valid())
        return ZYR_ERR_OUT_OF_MEMORY;
    reader.enableTransforms();
    const bool bgr = layout == PixelLayout::BGR || layout == PixelLayout::BGRA;
    if (!reader.readHeader(bgr))
        return ZYR_ERR_CORRUPT_IMAGE;
    if (const int32_t sizeCheck = checkSize(reader.width(), reader.height()))
        return sizeCheck;

    PixelLayout delivered;
    switch (reader.channels()) {
    case 1:
        delivered = PixelLayout::Grey8;
        break;
    case 2:
        delivered = PixelLayout::GreyAlpha;
        break;
    case 3:
        delivered = bgr ? PixelLayout::BGR : PixelLayout::RGB;
        break;
    case 4:
        delivered = bgr ? PixelLayout::BGRA : PixelLayout::RGBA;
        break;
    default:
        return ZYR_ERR_UNSUPPORTED_IMAGE;
    }
    if (delivered == layout)
        return reader.readRows(rows) ? ZYR_OK : ZYR_ERR_CORRUPT_IMAGE;

    // Interlaced images fill rows over several passes, so decode whole, then convert.
    const size_t width = reader.width();
    const size_t stride = width * static_cast<size_t>(reader.channels());
    std::vector<uint8_t> whole(stride * reader.height());
    std::vector<uint8_t*> wholeRows(reader.height());
    for (size_t y = 0; y < wholeRows.size(); ++y)
        wholeRows[y] = whole.data() + y * stride;
    if (!reader.readRows(wholeRows.data()))
        return ZYR_ERR_CORRUPT_IMAGE;
    for (size_t y = 0; y < wholeRows.size(); ++y)
        RowConverter::convert(delivered, wholeRows[y], layout, rows[y], static_cast<int32_t>(width));
    return ZYR_OK;
}

} // namespace zyr
