#pragma once

#include "KVIniFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// A fresh folder per test under the system temp dir, removed afterwards.
class TempFolder {
public:
    TempFolder() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("glyphor_") + info->test_suite_name() + "_" + info->name();
        for (char& c : name)
            if (c == '/')
                c = '_';
        path = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::string File(const std::string& name) const { return (path / name).string(); }

    std::filesystem::path path;
};

inline void WriteBytes(const std::string& file, const std::string& bytes) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << bytes;
}

inline std::string ReadBytes(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

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
