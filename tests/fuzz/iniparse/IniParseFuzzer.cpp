// Feeds arbitrary bytes to the INI loader. Without a byte shift, whatever was loaded must survive
// a Save and a second Load unchanged, and a second Save must give the same bytes.
#include "KVIniFile.h"
#include "TempFolder.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

// Every input is written and read back twice: a folder in memory, where there is one and no
// other is asked for, keeps that fast. Set before the scratch folder is made below.
[[maybe_unused]] const bool inMemory =
    !std::getenv("TMPDIR") && access("/dev/shm", W_OK) == 0 && setenv("TMPDIR", "/dev/shm", 0) == 0;

// Removed with its files when the fuzzer exits.
const TempFolder scratch;
const std::string inPath = scratch.file("in.ini");
const std::string outPath = scratch.file("out.ini");

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
    writeFile(inPath, std::string(reinterpret_cast<const char*>(data) + 1, size - 1));

    KVIniFile first;
    first.SetByteShift(shift != 0, shift);
    if (!first.Load(inPath.c_str(), false))
        std::abort();
    const std::string model = Dump(first);
    first.Save(outPath.c_str(), true);
    const std::string saved = readFile(outPath);

    KVIniFile second;
    second.SetByteShift(shift != 0, shift);
    second.Load(outPath.c_str(), true);
    // A shifted byte may turn into CR, LF or NUL and split a line; only plain files must round-trip.
    if (shift != 0)
        return 0;
    if (Dump(second) != model)
        std::abort();
    second.Save(outPath.c_str(), true);
    if (readFile(outPath) != saved)
        std::abort();
    return 0;
}
