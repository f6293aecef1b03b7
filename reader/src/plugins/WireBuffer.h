// Byte encoding of the messages between the reader library and its plug-in host processes: fixed-width
// values in native byte order (both ends run on the same machine) and length-prefixed byte strings.
// Reading checks every bound, so a reply cut short or padded with junk is refused, never overrun.
#ifndef ZYR_PLUGINS_WIRE_BUFFER_H
#define ZYR_PLUGINS_WIRE_BUFFER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zyr {

class WireWriter {
public:
    void i32(int32_t value) { raw(&value, sizeof value); }
    void u32(uint32_t value) { raw(&value, sizeof value); }
    void u64(uint64_t value) { raw(&value, sizeof value); }
    void raw(const void* data, size_t length);
    // A u32 length, then the bytes.
    void bytes(const void* data, size_t length);
    void text(const std::string& value) { bytes(value.data(), value.size()); }

    std::vector<uint8_t>& buffer() { return buffer_; }

private:
    std::vector<uint8_t> buffer_;
};

class WireReader {
public:
    WireReader(const uint8_t* data, size_t length) : data_(data), left_(length) {}

    // Each is false, and the reader stays failed, when the value runs past the end.
    bool i32(int32_t& value) { return raw(&value, sizeof value); }
    bool u32(uint32_t& value) { return raw(&value, sizeof value); }
    bool u64(uint64_t& value) { return raw(&value, sizeof value); }
    bool raw(void* out, size_t length);
    // Also false when the declared length is above maxLength.
    bool bytes(std::vector<uint8_t>& out, size_t maxLength);
    bool text(std::string& out, size_t maxLength);

    // True when every byte was read and nothing failed.
    bool finished() const { return !failed_ && left_ == 0; }

private:
    bool take(size_t length, const uint8_t*& at);

    const uint8_t* data_;
    size_t left_;
    bool failed_ = false;
};

} // namespace zyr

#endif
