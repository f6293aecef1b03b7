// Shared memory (a memfd) that carries images from the library to a plug-in host process. The
// library writes each image into it with rows packed; the host maps the same file read-only
// (SharedImageView).
#ifndef ZYR_PLUGINS_SHARED_IMAGE_BUFFER_H
#define ZYR_PLUGINS_SHARED_IMAGE_BUFFER_H

#include "ZyrReaderLowLevelAPI.h"
#include "ZyrPixelFormat.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace zyr {

class SharedImageBuffer {
public:
    SharedImageBuffer() = default;
    ~SharedImageBuffer();
    SharedImageBuffer(const SharedImageBuffer&) = delete;
    SharedImageBuffer& operator=(const SharedImageBuffer&) = delete;

    // Creates the memory (empty). False with the reason when the system refuses.
    bool create(std::string& reason);

    // Copies the image in, rows packed, growing the memory as needed. False when the memory cannot
    // grow (the image is then not held). packedStride and bytes describe the copy.
    bool hold(const ZyrImage& image, int32_t& packedStride, uint64_t& bytes);

    int fd() const { return fd_; }
    size_t capacity() const { return capacity_; }

private:
    bool grow(size_t bytes);

    int fd_ = -1;
    uint8_t* mapping_ = nullptr;
    size_t capacity_ = 0;
};

} // namespace zyr

#endif
