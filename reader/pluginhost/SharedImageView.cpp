#include "SharedImageView.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zyr {

SharedImageView::~SharedImageView() {
    if (mapping_)
        munmap(mapping_, mapped_);
    if (fd_ >= 0)
        close(fd_);
}

const uint8_t* SharedImageView::bytes(uint64_t length) {
    if (mapping_ && length <= mapped_)
        return mapping_;
    struct stat info {};
    if (fd_ < 0 || fstat(fd_, &info) != 0 || info.st_size <= 0 || uint64_t(info.st_size) < length)
        return nullptr;
    // Read-only: a plug-in that writes into the caller's image crashes its own host instead.
    void* mapping = mmap(nullptr, size_t(info.st_size), PROT_READ, MAP_SHARED, fd_, 0);
    if (mapping == MAP_FAILED)
        return nullptr;
    if (mapping_)
        munmap(mapping_, mapped_);
    mapping_ = static_cast<uint8_t*>(mapping);
    mapped_ = size_t(info.st_size);
    return mapping_;
}

} // namespace zyr
