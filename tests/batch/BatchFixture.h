// A scratch folder per command test, filled with generated sample images and expected texts.
#pragma once

#include "BatchProcess.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace batchtest {

class BatchFixture : public testing::Test {
protected:
    // Copies a generated sample (and, with its text, the expected-text file) under a new name.
    void CopySample(const std::string& sample, const std::string& as, bool withText = true);
    // Draws a QR code holding exactly payload into name.png, with name.txt beside it.
    void MakeQrImage(const std::string& name, const std::string& payload);
    // Reader settings that load the plug-ins of pluginFolder with the settings of settingsFolder
    // (the build's when empty) and keep the application folder, where Glyphor.ini is read, in the
    // scratch folder. Returns its path.
    std::string WriteSettings(const std::string& pluginFolder = "", const std::string& fileName = "reader.ini",
                              const std::string& settingsFolder = "");

    std::string Path(const std::string& relative) const { return (m_dir / relative).string(); }

    TempFolder m_folder;
    std::filesystem::path m_dir = m_folder.path();
};

} // namespace batchtest
