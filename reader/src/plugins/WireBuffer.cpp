#include "plugins/WireBuffer.h"

#include <cstring>

namespace zyr {

void WireWriter::raw(const void* data, size_t length) {
    const auto* bytes = static_cast<const uint8_t*>(data);
    buffer_.insert(buffer_.end(), bytes, bytes + length);
}

void WireWriter::bytes(const void* data, size_t length) {
    u32(uint32_t(length));
    raw(data, length);
}

bool WireReader::take(size_t length, const uint8_t*& at) {
    if (failed_ || length > left_) {
        failed_ = true;
        return false;
    }
    at = data_;
    data_ += length;
    left_ -= length;
    return true;
}

bool WireReader::raw(void* out, size_t length) {
    const uint8_t* at = nullptr;
    if (!take(length, at))
        return false;
    if (length > 0)
        std::memcpy(out, at, length);
    return true;
}

bool WireReader::bytes(std::vector<uint8_t>& out, size_t maxLength) {
    uint32_t length = 0;
    const uint8_t* at = nullptr;
    if (!u32(length))
        return false;
    if (length > maxLength) {
        failed_ = true;
        return false;
    }
    if (!take(length, at))
        return false;
    out.assign(at, at + length);
    return true;
}

bool WireReader::text(std::string& out, size_t maxLength) {
    std::vector<uint8_t> bytes;
    if (!this->bytes(bytes, maxLength))
        return false;
    out.assign(bytes.begin(), bytes.end());
    return true;
}

} // namespace zyr
