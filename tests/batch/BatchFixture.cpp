#include "BatchFixture.h"

#include "SampleRenderer.h"

namespace fs = std::filesystem;

namespace batchtest {

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
    writeFile(Path(name + ".txt"), payload);
}

std::string BatchFixture::WriteSettings(const std::string& pluginFolder, const std::string& fileName,
                                       const std::string& settingsFolder) {
    const std::string path = Path(fileName);
    writeFile(path, "[Folders]\nPluginFolder=" + (pluginFolder.empty() ? PluginDir() : pluginFolder) +
                        "\nPluginSettingsFolder=" + (settingsFolder.empty() ? PluginDir() : settingsFolder) +
                        "\nApplicationFolder=" + m_dir.string() + "\n");
    return path;
}

} // namespace batchtest
