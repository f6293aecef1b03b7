// The host's read-only view of the shared image memory the library sent at open.
#ifndef ZYR_PLUGINHOST_SHARED_IMAGE_VIEW_H
#define ZYR_PLUGINHOST_SHARED_IMAGE_VIEW_H

#include <cstddef>
#include <cstdint>

namespace zyr {

class SharedImageView {
public:
    explicit SharedImageView(int fd) : fd_(fd) {} // takes the descriptor; -1 for none
    ~SharedImageView();
    SharedImageView(const SharedImageView&) = delete;
    SharedImageView& operator=(const SharedImageView&) = delete;

    // The start of the memory, mapped anew when the library has grown it; null when the memory is
    // not length bytes long (a request that does not match what the library wrote).
    const uint8_t* bytes(uint64_t length);

private:
    int fd_;
    uint8_t* mapping_ = nullptr;
    size_t mapped_ = 0;
};

} // namespace zyr

#endif
