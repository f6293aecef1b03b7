#pragma once

#include "KVIniFile.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// The whole model as text, one "[name]" or "name=value" line each, so two files compare in one go.
inline std::string Dump(const KVIniFile& ini) {
    std::string out;
    auto* sections = ini.GetSections();
    if (!sections)
        return "<no sections>";
    for (int s = 0; s < sections->GetCount(); ++s) {
        KVIniSection* section = sections->GetAt(s);
        out += "[" + std::string(section->GetName().str()) + "]\n";
        auto* keys = section->GetKeys();
        for (int k = 0; k < keys->GetCount(); ++k) {
            KVIniKey* key = keys->GetAt(k);
            out += std::string(key->GetName().str()) + "=" + key->GetValue().str() + "\n";
        }
    }
    return out;
}
