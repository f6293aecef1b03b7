#include "imagecodec/JpegDecoder.h"

#include "ZyrReaderLowLevelAPI.h"
#include "imagecodec/RowConverter.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <vector>

#include <jerror.h>
#include <jpeglib.h>

namespace zyr {
namespace {

// Progressive files may hold any number of scans; far more than any encoder writes is an attack.
constexpr int kMaxScans = 1000;
constexpr long kMaxDecoderMemory = 1024L * 1024L * 1024L;

struct ErrorManager {
    jpeg_error_mgr base;
    jmp_buf jump;
    int32_t code;
};

[[noreturn]] void fail(j_common_ptr cinfo, int32_t code) {
    auto* errors = reinterpret_cast<ErrorManager*>(cinfo->err);
    errors->code = code;
    longjmp(errors->jump, 1);
}

[[noreturn]] void onError(j_common_ptr cinfo) {
    switch (cinfo->err->msg_code) {
    case JERR_OUT_OF_MEMORY:
        fail(cinfo, ZYR_ERR_OUT_OF_MEMORY);
    case JERR_NO_BACKING_STORE:
    case JERR_CONVERSION_NOTIMPL:
    case JERR_NOT_COMPILED:
        fail(cinfo, ZYR_ERR_UNSUPPORTED_IMAGE);
    default:
        fail(cinfo, ZYR_ERR_CORRUPT_IMAGE);
    }
}

// Warnings about damaged data would otherwise yield a half-grey image and success.
void onMessage(j_common_ptr cinfo, int level) {
    if (level >= 0)
        return;
    const int code = cinfo->err->msg_code;
    // The arithmetic-coding warning's number depends on how the library was configured.
    const char* text =
        code >= 0 && code <= cinfo->err->last_jpeg_message ? cinfo->err->jpeg_message_table[code] : "";
    if (text != nullptr && std::strstr(text, "bad arithmetic code") != nullptr)
        fail(cinfo, ZYR_ERR_CORRUPT_IMAGE);
    switch (code) {
    case JWRN_BOGUS_PROGRESSION:
    case JWRN_HIT_MARKER:
    case JWRN_HUFF_BAD_CODE:
    case JWRN_JPEG_EOF:
    case JWRN_MUST_RESYNC:
    case JWRN_NOT_SEQUENTIAL:
        fail(cinfo, ZYR_ERR_CORRUPT_IMAGE);
    default:
        break;
    }
}

void silent(j_common_ptr) {}

void onProgress(j_common_ptr cinfo) {
    auto* decompress = reinterpret_cast<j_decompress_ptr>(cinfo);
    if (decompress->input_scan_number > kMaxScans)
        fail(cinfo, ZYR_ERR_CORRUPT_IMAGE);
}

// Owns one libjpeg decompressor. Each step that may fail sets its own jump target and keeps only
// plain data in its frame.
class JpegReader {
public:
    JpegReader() {
        cinfo_.err = jpeg_std_error(&errors_.base);
        errors_.base.error_exit = onError;
        errors_.base.emit_message = onMessage;
        errors_.base.output_message = silent;
        errors_.code = ZYR_OK;
        progress_.progress_monitor = onProgress;
    }
    ~JpegReader() {
        if (created_)
            jpeg_destroy_decompress(&cinfo_);
    }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;

    int32_t readHeader(const uint8_t* data, size_t size) {
        if (setjmp(errors_.jump))
            return errors_.code;
        jpeg_create_decompress(&cinfo_);
        created_ = true;
        cinfo_.mem->max_memory_to_use = kMaxDecoderMemory;
        cinfo_.progress = &progress_;
        jpeg_mem_src(&cinfo_, data, static_cast<unsigned long>(size));
        jpeg_read_header(&cinfo_, TRUE);
        return ZYR_OK;
    }

    int32_t start(J_COLOR_SPACE outputSpace) {
        if (setjmp(errors_.jump))
            return errors_.code;
        cinfo_.out_color_space = outputSpace;
        jpeg_start_decompress(&cinfo_);
        return ZYR_OK;
    }

    int32_t readRows(uint8_t* const* rows) {
        if (setjmp(errors_.jump))
            return errors_.code;
        while (cinfo_.output_scanline < cinfo_.output_height) {
            const JDIMENSION line = cinfo_.output_scanline;
            if (jpeg_read_scanlines(&cinfo_, const_cast<JSAMPARRAY>(rows + line),
                                    cinfo_.output_height - line) == 0)
                fail(reinterpret_cast<j_common_ptr>(&cinfo_), ZYR_ERR_CORRUPT_IMAGE);
        }
        return ZYR_OK;
    }

    jpeg_decompress_struct& info() { return cinfo_; }

private:
    jpeg_decompress_struct cinfo_{};
    ErrorManager errors_{};
    jpeg_progress_mgr progress_{};
    bool created_ = false;
};

int32_t checkSize(const jpeg_decompress_struct& cinfo) {
    if (cinfo.image_width == 0 || cinfo.image_height == 0)
        return ZYR_ERR_CORRUPT_IMAGE;
    if (cinfo.image_width > kMaxImageDimension || cinfo.image_height > kMaxImageDimension ||
        int64_t(cinfo.image_width) * int64_t(cinfo.image_height) > kMaxImagePixels)
        return ZYR_ERR_UNSUPPORTED_IMAGE;
    return ZYR_OK;
}

J_COLOR_SPACE outputSpaceFor(PixelLayout layout) {
    switch (layout) {
    case PixelLayout::Grey8:
        return JCS_GRAYSCALE;
    case PixelLayout::RGB:
        return JCS_EXT_RGB;
    case PixelLayout::RGBA:
        return JCS_EXT_RGBA;
    case PixelLayout::BGR:
        return JCS_EXT_BGR;
    case PixelLayout::BGRA:
        return JCS_EXT_BGRA;
    case PixelLayout::GreyAlpha:
        break;
    }
    return JCS_UNKNOWN;
}

// libjpeg hands CMYK out as stored; files with an Adobe marker store it inverted.
void cmykToRgb(const uint8_t* cmyk, uint8_t* rgb, JDIMENSION width, bool inverted) {
    for (JDIMENSION x = 0; x < width; ++x, cmyk += 4, rgb += 3) {
        const int k = inverted ? cmyk[3] : 255 - cmyk[3];
        for (int i = 0; i < 3; ++i) {
            const int c = inverted ? cmyk[i] : 255 - cmyk[i];
            rgb[i] = static_cast<uint8_t>((c * k + 127) / 255);
        }
    }
}

} // namespace

bool JpegDecoder::hasSignature(const uint8_t* data, size_t size) {
    return size >= 3 && data[0] == 0xFF && data[1] == 0xD8 && data[2] == 0xFF;
}

int32_t JpegDecoder::readInfo(const uint8_t* data, size_t size, ImageInfo& info) {
    JpegReader reader;
    if (const int32_t result = reader.readHeader(data, size))
        return result;
    const jpeg_decompress_struct& cinfo = reader.info();
    if (const int32_t sizeCheck = checkSize(cinfo))
        return sizeCheck;
    info.type = ImageFileType::Jpeg;
    info.width = static_cast<int32_t>(cinfo.image_width);
    info.height = static_cast<int32_t>(cinfo.image_height);
    info.colour = cinfo.jpeg_color_space != JCS_GRAYSCALE;
    info.alpha = false;
    return ZYR_OK;
}

int32_t JpegDecoder::decode(const uint8_t* data, size_t size, PixelLayout layout, uint8_t* const* rows) {
    JpegReader reader;
    if (const int32_t result = reader.readHeader(data, size))
        return result;
    jpeg_decompress_struct& cinfo = reader.info();
    if (const int32_t sizeCheck = checkSize(cinfo))
        return sizeCheck;

    const bool cmyk = cinfo.jpeg_color_space == JCS_CMYK || cinfo.jpeg_color_space == JCS_YCCK;
    const J_COLOR_SPACE direct = outputSpaceFor(layout);
    if (!cmyk && direct != JCS_UNKNOWN) {
        if (const int32_t result = reader.start(direct))
            return result;
        return reader.readRows(rows);
    }

    // Decode whole into an intermediate layout, then convert row by row.
    const J_COLOR_SPACE space =
        cmyk ? JCS_CMYK : (cinfo.jpeg_color_space == JCS_GRAYSCALE ? JCS_GRAYSCALE : JCS_EXT_RGB);
    if (const int32_t result = reader.start(space))
        return result;
    const size_t width = cinfo.output_width;
    const size_t stride = width * static_cast<size_t>(cinfo.output_components);
    std::vector<uint8_t> whole(stride * cinfo.output_height);
    std::vector<uint8_t*> wholeRows(cinfo.output_height);
    for (size_t y = 0; y < wholeRows.size(); ++y)
        wholeRows[y] = whole.data() + y * stride;
    if (const int32_t result = reader.readRows(wholeRows.data()))
        return result;

    std::vector<uint8_t> rgb(width * 3);
    const bool inverted = cinfo.saw_Adobe_marker != 0;
    for (size_t y = 0; y < wholeRows.size(); ++y) {
        if (cmyk) {
            cmykToRgb(wholeRows[y], rgb.data(), cinfo.output_width, inverted);
            RowConverter::convert(PixelLayout::RGB, rgb.data(), layout, rows[y], static_cast<int32_t>(width));
        } else {
            const PixelLayout from = space == JCS_GRAYSCALE ? PixelLayout::Grey8 : PixelLayout::RGB;
            RowConverter::convert(from, wholeRows[y], layout, rows[y], static_cast<int32_t>(width));
        }
    }
    return ZYR_OK;
}

} // namespace zyr
