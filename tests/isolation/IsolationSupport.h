#pragma once

#include "PluginTestSupport.h"

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace isolationtest {

// What the misbehaving test plug-in does on an image whose first pixel byte is this.
enum Fault : uint8_t {
    None = 0,
    Abort = 'A',
    Segfault = 'S',
    Exit = 'E',
    Hang = 'H',
    Garbage = 'G',
    SomeGarbage = 'g',
    JunkReply = 'J',
    LargeSymbol = 'L',
};
constexpr size_t kLargeSymbolBytes = 3 * 1024 * 1024;

using namespace plugintest;

std::string faultyPlugin();   // KVDECODE_Faulty.so
std::string faultySettings(); // its #KVDECODE_Faulty.ini (time limit 2 s)

// A test image: pixels from seed, the first byte the fault; stride may leave a gap after each row.
struct TestImage {
    TestImage(int32_t width, int32_t height, int32_t format, uint8_t fault, uint32_t seed,
              int32_t padding = 0);
    const ZyrImage* image() const { return &image_; }
    std::string expectedText() const; // what the plug-in reports for it when it behaves

    std::vector<uint8_t> pixels;
    ZyrImage image_{};
};

// Plug-in host processes whose parent is the given process, zombies included.
std::vector<pid_t> hostChildren(pid_t parent);
// Waits up to limitMs for the process to end (gone or a zombie).
bool waitEnded(pid_t pid, int limitMs);
// True when this process could still wait for pid (it is an unreaped child).
bool unreapedChild(pid_t pid);

} // namespace isolationtest
