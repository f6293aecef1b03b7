#include "plugins/SharedImageBuffer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace zyr {
namespace {

// The memory grows in whole steps so that a run of slightly different sizes maps once.
constexpr size_t kGrowthStep = size_t(1) << 20;

} // namespace

SharedImageBuffer::~SharedImageBuffer() {
    if (mapping_)
        munmap(mapping_, capacity_);
    if (fd_ >= 0)
        close(fd_);
}

bool SharedImageBuffer::create(std::string& reason) {
    fd_ = memfd_create("zyrreader-image", MFD_CLOEXEC);
    if (fd_ < 0) {
        reason = std::string("memfd_create: ") + std::strerror(errno);
        return false;
    }
    return true;
}

bool SharedImageBuffer::grow(size_t bytes) {
    if (bytes <= capacity_)
        return true;
    const size_t size = (bytes + kGrowthStep - 1) / kGrowthStep * kGrowthStep;
    if (ftruncate(fd_, off_t(size)) != 0)
        return false;
    void* mapping = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, fd_, 0);
    if (mapping == MAP_FAILED)
        return false;
    if (mapping_)
        munmap(mapping_, capacity_);
    mapping_ = static_cast<uint8_t*>(mapping);
    capacity_ = size;
    return true;
}

bool SharedImageBuffer::hold(const ZyrImage& image, int32_t& packedStride, uint64_t& bytes) {
    const size_t row = size_t(image.Width) * size_t(ZyrPixel_BytesPerPixel(image.PixelFormat));
    const size_t total = row * size_t(image.Height);
    if (fd_ < 0 || row == 0 || row > size_t(INT32_MAX) || !grow(total))
        return false;
    if (size_t(image.Stride) == row) {
        std::memcpy(mapping_, image.Pixels, total);
    } else {
        for (int32_t y = 0; y < image.Height; ++y)
            std::memcpy(mapping_ + size_t(y) * row, image.Pixels + size_t(y) * size_t(image.Stride), row);
    }
    packedStride = int32_t(row);
    bytes = total;
    return true;
}

} // namespace zyr
