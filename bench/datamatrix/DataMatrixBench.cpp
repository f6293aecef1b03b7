// Data Matrix readers on the measurement set, image by image in one run: the DataMatrix plug-in,
// the ZXing plug-in (both through the reader library, loaded into this process so that their
// processor time can be read) and libdmtx's own dmtxread (a process per image). Prints median and
// largest wall and processor time per image, with and without a symbol, and how many symbols each
// read, missed or misread.
//
//   bench_datamatrix [SET_FOLDER]      (default: the build's datamatrix-set)
//   DMTXREAD_MS=N limits dmtxread to N ms per image (default: no limit, as it runs by default)
#include "ImageFileLoader.h"
#include "ImageInputs.h"

#include <ZyrReaderLowLevelAPI.h>

#include <sys/resource.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

struct Tally {
    explicit Tally(std::string n) : name(std::move(n)) {}
    std::string name;
    std::vector<double> withSymbol, without, cpuWith, cpuWithout; // ms per image
    int read = 0, missed = 0, misread = 0;
    std::string missedFiles;

    void add(const std::string& file, bool expected, const std::vector<std::string>& got,
             const std::string& payload, double ms, double cpu) {
        (expected ? withSymbol : without).push_back(ms);
        (expected ? cpuWith : cpuWithout).push_back(cpu);
        bool hit = false;
        for (const std::string& g : got) {
            if (expected && g == payload)
                hit = true;
            else
                ++misread;
        }
        if (expected)
            ++(hit ? read : missed);
        if (expected && !hit)
            missedFiles += " " + file;
    }
};

std::string slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void collect(void* context, int32_t, int32_t, int32_t, const ZyrSymbolResult* symbol) {
    if (!symbol)
        return;
    static_cast<std::vector<std::string>*>(context)->emplace_back(reinterpret_cast<const char*>(symbol->Data),
                                                                  size_t(symbol->DataLength));
    ZyrReader_DestroyCachedObject(symbol);
}

// The plug-in with its default settings, but in this process.
uint64_t load(const std::string& name, const std::string& scratch) {
    const std::string dir = GLYPHOR_PLUGIN_DIR;
    std::string settings = slurp(dir + "/#KVDECODE_" + name + ".ini");
    const size_t at = settings.find("Isolated=1");
    if (at != std::string::npos)
        settings.replace(at, 10, "Isolated=0");
    const std::string copy = scratch + "/#KVDECODE_" + name + ".ini";
    std::ofstream(copy, std::ios::binary) << settings;
    uint64_t handle = 0;
    if (ZyrReader_ImagePluginLoad((dir + "/KVDECODE_" + name + ".so").c_str(), copy.c_str(), &handle, 0) !=
        ZYR_OK) {
        std::fprintf(stderr, "cannot load the %s plug-in\n", name.c_str());
        std::exit(1);
    }
    return handle;
}

double since(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double threadCpuMs() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1000.0 + double(now.tv_nsec) / 1e6;
}

double childrenCpuMs() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000.0 +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000.0;
}

// dmtxread prints each symbol's message followed by a newline (-n).
std::vector<std::string> runDmtxread(const std::string& path, const std::string& limit) {
    const std::string command = "dmtxread -n " + limit + " '" + path + "' 2>/dev/null";
    std::vector<std::string> got;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return got;
    std::string out;
    char buffer[4096];
    for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        out.append(buffer, n);
    pclose(pipe);
    std::istringstream lines(out);
    for (std::string line; std::getline(lines, line);)
        got.push_back(line);
    return got;
}

double percentile(std::vector<double> v, double p) {
    if (v.empty())
        return 0;
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, size_t(p * double(v.size() - 1) + 0.5))];
}

void report(const Tally& t) {
    std::printf("  %-19s with a symbol: median %6.1f ms (cpu %6.1f), max %7.1f ms (cpu %7.1f)\n"
                "  %-19s without:       median %6.1f ms (cpu %6.1f), max %7.1f ms (cpu %7.1f)\n"
                "  %-19s read %d, missed %d (%s), misread %d\n",
                t.name.c_str(), percentile(t.withSymbol, 0.5), percentile(t.cpuWith, 0.5),
                percentile(t.withSymbol, 1.0), percentile(t.cpuWith, 1.0), "", percentile(t.without, 0.5),
                percentile(t.cpuWithout, 0.5), percentile(t.without, 1.0), percentile(t.cpuWithout, 1.0), "",
                t.read, t.missed, t.missedFiles.empty() ? "" : t.missedFiles.c_str() + 1, t.misread);
}

} // namespace

int main(int argc, char** argv) {
    const std::string folder = argc > 1 ? argv[1] : GLYPHOR_DATAMATRIX_SET_DIR;
    std::vector<std::string> errors;
    const std::vector<ImageInput> inputs = ImageInputs::Expand({folder}, errors);
    if (inputs.empty()) {
        std::fprintf(stderr, "no images in %s\n", folder.c_str());
        return 2;
    }
    const char* ms = std::getenv("DMTXREAD_MS");
    const std::string limit = ms && *ms ? std::string("-m ") + ms : "";
    char scratch[] = "/tmp/bench_datamatrix.XXXXXX";
    if (!mkdtemp(scratch)) {
        std::perror("mkdtemp");
        return 1;
    }
    const uint64_t dataMatrix = load("DataMatrix", scratch), zxing = load("ZXing", scratch);
    Tally plugin{"DataMatrix plug-in"}, other{"ZXing plug-in"}, tool{"dmtxread"};
    for (const ImageInput& input : inputs) {
        const std::string payload = slurp(input.path.substr(0, input.path.rfind('.')) + ".txt");
        const bool expected = !payload.empty();
        std::string error;
        const std::shared_ptr<const ZyrImage> image = ImageFileLoader::Load(input.path, error);
        if (!image) {
            std::fprintf(stderr, "%s: %s\n", input.display.c_str(), error.c_str());
            return 1;
        }
        for (auto [handle, tally] : {std::pair{dataMatrix, &plugin}, std::pair{zxing, &other}}) {
            std::vector<std::string> got;
            const double cpu = threadCpuMs();
            const auto start = Clock::now();
            const int32_t result =
                ZyrReader_ImagePluginDecode(true, handle, image.get(), "", 1, "", collect, &got, 0, 0, 0);
            const double took = since(start);
            if (result != ZYR_OK)
                std::fprintf(stderr, "%s: %s: %s\n", input.display.c_str(), tally->name.c_str(),
                             ZyrReader_ErrorText(result));
            tally->add(input.display, expected, got, payload, took, threadCpuMs() - cpu);
        }
        const double cpu = childrenCpuMs();
        const auto start = Clock::now();
        const std::vector<std::string> got = runDmtxread(input.path, limit);
        const double took = since(start);
        tool.add(input.display, expected, got, payload, took, childrenCpuMs() - cpu);
    }
    double load[3] = {};
    if (FILE* f = std::fopen("/proc/loadavg", "r")) {
        if (std::fscanf(f, "%lf %lf %lf", &load[0], &load[1], &load[2]) != 3)
            load[0] = load[1] = load[2] = 0;
        std::fclose(f);
    }
    std::printf("Data Matrix readers on %zu images of %s (load average %.2f %.2f %.2f)\n", inputs.size(),
                folder.c_str(), load[0], load[1], load[2]);
    std::printf(
        "  (plug-ins: the decode call, in this process, image already loaded; dmtxread: whole process%s)\n",
        limit.empty() ? "" : (", " + limit).c_str());
    for (const Tally* t : {&plugin, &other, &tool})
        report(*t);
    ZyrReader_DestroyCachedData();
    for (const char* name : {"DataMatrix", "ZXing"})
        unlink((std::string(scratch) + "/#KVDECODE_" + name + ".ini").c_str());
    rmdir(scratch);
    return 0;
}
