#include "BatchFixture.h"

#include "SampleRenderer.h"

namespace fs = std::filesystem;

namespace batchtest {

void BatchFixture::SetUp() {
    const testing::TestInfo* info = testing::UnitTest::GetInstance()->current_test_info();
    m_dir =
        fs::path(testing::TempDir()) / "batch" / (std::string(info->test_suite_name()) + "." + info->name());
    fs::remove_all(m_dir);
    fs::create_directories(m_dir);
}

void BatchFixture::TearDown() { fs::remove_all(m_dir); }

void BatchFixture::CopySample(const std::string& sample, const std::string& as, bool withText) {
    const fs::path source = SamplePath(sample);
    fs::create_directories((m_dir / as).parent_path());
    fs::copy_file(source, m_dir / as, fs::copy_options::overwrite_existing);
    if (withText) {
        fs::copy_file(fs::path(source).replace_extension(".txt"), (m_dir / as).replace_extension(".txt"),
                      fs::copy_options::overwrite_existing);
    }
}

void BatchFixture::MakeQrImage(const std::string& name, const std::string& payload) {
    using namespace glyphor::samples;
    Sample sample;
    sample.name = name;
    sample.symbols = {{ZXing::BarcodeFormat::QRCode, payload}};
    RasterImage image;
    std::string error;
    ASSERT_TRUE(renderSample(sample, image, error)) << error;
    ASSERT_TRUE(writeSample(Path(name + ".png"), sample, image));
    WriteFile(Path(name + ".txt"), payload);
}

std::string BatchFixture::WriteSettings(const std::string& pluginFolder, const std::string& fileName) {
    const std::string path = Path(fileName);
    const std::string plugins = pluginFolder.empty() ? PluginDir() : pluginFolder;
    WriteFile(path, "[Folders]\nPluginFolder=" + plugins + "\nPluginSettingsFolder=" + PluginDir() +
                        "\nApplicationFolder=" + m_dir.string() + "\n");
    return path;
}

} // namespace batchtest
