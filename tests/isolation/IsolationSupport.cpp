#include "IsolationSupport.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

namespace isolationtest {

std::string faultyPlugin() { return std::string(ISOLATION_FIXTURE_DIR) + "/KVDECODE_Faulty.so"; }
std::string faultySettings() { return std::string(ISOLATION_FIXTURE_DIR) + "/#KVDECODE_Faulty.ini"; }

TestImage::TestImage(int32_t width, int32_t height, int32_t format, uint8_t fault, uint32_t seed,
                     int32_t padding) {
    const int32_t pixelSize = format == ZYR_PIXEL_GREY8 ? 1 : format == ZYR_PIXEL_RGB24 ? 3 : 4;
    const int32_t stride = width * pixelSize + padding;
    pixels.resize(size_t(stride) * size_t(height));
    uint32_t state = seed * 2654435761u + 1;
    for (uint8_t& byte : pixels) {
        state = state * 1664525u + 1013904223u;
        byte = uint8_t(state >> 24);
    }
    pixels[0] = fault;
    if (fault == None && pixels.size() > 1)
        pixels[0] = uint8_t(pixels[1] < 128 ? 1 : 200); // anything but a fault letter
    image_.Width = width;
    image_.Height = height;
    image_.Stride = stride;
    image_.PixelFormat = format;
    image_.Pixels = pixels.data();
}

std::string TestImage::expectedText() const {
    const int32_t row = image_.Width * (image_.PixelFormat == ZYR_PIXEL_GREY8   ? 1
                                        : image_.PixelFormat == ZYR_PIXEL_RGB24 ? 3
                                                                                : 4);
    uint32_t sum = 0;
    for (int32_t y = 0; y < image_.Height; ++y)
        for (int32_t x = 0; x < row; ++x)
            sum += pixels[size_t(y) * size_t(image_.Stride) + size_t(x)];
    return std::to_string(image_.Width) + "x" + std::to_string(image_.Height) + " " + std::to_string(sum);
}

namespace {

// Fields of /proc/<pid>/stat after the command: state, then the parent's pid.
bool readStat(pid_t pid, std::string& command, char& state, pid_t& parent) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const size_t open = text.find('('), close = text.rfind(')');
    if (open == std::string::npos || close == std::string::npos)
        return false;
    command = text.substr(open + 1, close - open - 1);
    std::istringstream rest(text.substr(close + 1));
    long parentId = 0;
    rest >> state >> parentId;
    parent = pid_t(parentId);
    return bool(rest);
}

} // namespace

std::vector<pid_t> hostChildren(pid_t parent) {
    std::vector<pid_t> found;
    DIR* proc = opendir("/proc");
    if (!proc)
        return found;
    while (dirent* entry = readdir(proc)) {
        const pid_t pid = pid_t(std::atol(entry->d_name));
        std::string command;
        char state = 0;
        pid_t itsParent = 0;
        // The kernel keeps the first 15 characters of the name.
        if (pid > 0 && readStat(pid, command, state, itsParent) && itsParent == parent &&
            std::string("zyrreader-pluginhost").compare(0, command.size(), command) == 0)
            found.push_back(pid);
    }
    closedir(proc);
    return found;
}

bool waitEnded(pid_t pid, int limitMs) {
    for (int waited = 0;; waited += 10) {
        std::string command;
        char state = 0;
        pid_t parent = 0;
        if (!readStat(pid, command, state, parent) || state == 'Z' || state == 'X')
            return true;
        if (waited >= limitMs)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

bool unreapedChild(pid_t pid) {
    siginfo_t info{};
    return waitid(P_PID, id_t(pid), &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

} // namespace isolationtest
