// Feeds arbitrary bytes to the INI loader. Without a byte shift, whatever was loaded must survive
// a Save and a second Load unchanged, and a second Save must give the same bytes.
#include "KVIniFile.h"

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace {

std::string Folder() {
    const char* tmp = std::getenv("TMPDIR");
    if (tmp && *tmp)
        return tmp;
    return access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
}

const std::string inPath = Folder() + "/glyphor_fuzz_ini_in_" + std::to_string(getpid());
const std::string outPath = Folder() + "/glyphor_fuzz_ini_out_" + std::to_string(getpid());

// Removes the scratch files when the fuzzer exits.
struct ScratchFiles {
    ~ScratchFiles() {
        unlink(inPath.c_str());
        unlink(outPath.c_str());
    }
} scratchFiles;

void Write(const std::string& file, const uint8_t* data, size_t size) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

std::string Read(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string Dump(KVIniFile& ini) {
    std::string out;
    auto* sections = ini.GetSections();
    for (int s = 0; sections && s < sections->GetCount(); ++s) {
        KVIniSection* section = sections->GetAt(s);
        out += "[" + std::string(section->GetName().str()) + "]\n";
        if (ini.FindSection(section->GetName().str(), false) == nullptr)
            std::abort();
        auto* keys = section->GetKeys();
        for (int k = 0; k < keys->GetCount(); ++k) {
            KVIniKey* key = keys->GetAt(k);
            out += std::string(key->GetName().str()) + "=" + key->GetValue().str() + "\n";
            // Typed reads of arbitrary text must be defined.
            (void)key->GetValueInt();
            (void)key->GetValueBool();
            KVIniKey* found = section->FindKey(key->GetName().str(), false);
            if (found == nullptr || !(found->GetName() == key->GetName()))
                std::abort(); // a stored key must be found by its name
        }
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1)
        return 0;
    // The first byte picks the shift: 0 means off, anything else shifts by that amount.
    const int shift = data[0];
    Write(inPath, data + 1, size - 1);

    KVIniFile first;
    first.SetByteShift(shift != 0, shift);
    if (!first.Load(inPath.c_str(), false))
        std::abort();
    const std::string model = Dump(first);
    first.Save(outPath.c_str(), true);
    const std::string saved = Read(outPath);

    KVIniFile second;
    second.SetByteShift(shift != 0, shift);
    second.Load(outPath.c_str(), true);
    // A shifted byte may turn into CR, LF or NUL and split a line; only plain files must round-trip.
    if (shift != 0)
        return 0;
    if (Dump(second) != model)
        std::abort();
    second.Save(outPath.c_str(), true);
    if (Read(outPath) != saved)
        std::abort();
    return 0;
}
