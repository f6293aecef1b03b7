// A stand-in for the bench that a test kills: loads the test plug-in twice, decodes once with each
// (which starts their hosts), keeps one host busy with an image that hangs, says "ready" on stdout
// and waits to be killed.
#include <ZyrReaderLowLevelAPI.h>

#include <unistd.h>

#include <cstdio>
#include <thread>
#include <vector>

namespace {

void ignore(void*, int32_t, int32_t, int32_t, const ZyrSymbolResult*) {}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    uint64_t idle = 0, busy = 0;
    if (ZyrReader_ImagePluginLoad(argv[1], argv[2], &idle, 0) != ZYR_OK ||
        ZyrReader_ImagePluginLoad(argv[1], argv[2], &busy, 0) != ZYR_OK)
        return 3;
    std::vector<uint8_t> plain(16, 1);
    ZyrImage first{4, 4, 4, ZYR_PIXEL_GREY8, plain.data()};
    for (uint64_t handle : {idle, busy})
        if (ZyrReader_ImagePluginDecode(true, handle, &first, "", 1, "", ignore, nullptr, 0, 0, 0) != ZYR_OK)
            return 4;
    std::vector<uint8_t> hang(16, 'H');
    ZyrImage image{4, 4, 4, ZYR_PIXEL_GREY8, hang.data()};
    std::thread([&] {
        ZyrReader_ImagePluginDecode(true, busy, &image, "", 1, "", ignore, nullptr, 0, 0, 0);
    }).detach();
    std::printf("ready\n");
    std::fflush(stdout);
    for (;;)
        pause();
}
