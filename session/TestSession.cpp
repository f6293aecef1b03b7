#include "TestSession.h"

#include "KVBaseException.h"
#include "KVIniFile.h"
#include "SessionPaths.h"

#include <cstdio>
#include <filesystem>

TestSession::TestSession(SessionView& v) : view(v), executableFolder(SessionPaths::ExecutableFolder()) {}

ButtonStates TestSession::Buttons() const {
    ButtonInputs in;
    in.busy = busy;
    in.scannerConnected = scannerConnected;
    in.imageCount = files.Count();
    in.currentIndex = files.CurrentIndex();
    return ComputeButtonStates(in);
}

void TestSession::LoadPlugins() {
    plugins.Load(ReaderSession::Settings(), imageSettings);
}

void TestSession::LoadSettings() {
    KVIniFile ini;
    try {
        const ZyrReaderSettings& reader = ReaderSession::Settings();
        const std::string path =
            SessionPaths::FolderWithSeparator(reader.ApplicationFolder, sizeof reader.ApplicationFolder) +
            kSettingsFile;
        std::error_code error;
        if (!std::filesystem::exists(path, error)) {
            return;
        }
        ini.Load(path.c_str(), true);
        imageNumber = ini.GetInt(kSection, "BitmapID", 0);
        plugins.RestoreSelection(ini.GetString(kSection, "SelectedPlugins", ""));
        files.SetFilterIndex(static_cast<uint32_t>(ini.GetInt(kSection, "FileDlgFilterIndex", 0)));
    } catch (const KVBaseException&) {
        // An unreadable file: the values read so far stay.
    }
}

void TestSession::SaveSettings() {
    KVIniFile ini;
    ini.SetInt(kSection, "BitmapID", imageNumber.load());
    ini.SetString(kSection, "SelectedPlugins", plugins.SelectedNames().str());
    ini.SetInt(kSection, "FileDlgFilterIndex", static_cast<int>(files.FilterIndex()));
    try {
        ini.Save((SessionPaths::FolderWithSeparator(executableFolder) + kSettingsFile).c_str(), true);
    } catch (const KVBaseException&) {
        // A read-only folder: the values are lost, silently.
    }
}

void TestSession::ApplyDarkObjectDetect(int checkState) {
    ZyrReaderSettings& reader = ReaderSession::Settings();
    reader.DarkObjectDetect = static_cast<uint8_t>(checkState & 0xFF);
    const int32_t result = ZyrReader_CameraUpdateSettings(&reader);
    if (result != ZYR_OK) {
        char text[64];
        std::snprintf(text, sizeof text, "Error saving settings.  Error code: %d", result);
        view.ShowMessage(MessageKind::Exclamation, text);
    }
}

void TestSession::OpenImages(const std::vector<std::string>& paths, uint32_t filterIndex) {
    files.SetFilterIndex(filterIndex);
    files.Replace(paths);
    if (const auto first = files.CurrentPath()) {
        ShowFile(*first);
    }
    view.UpdateButtons();
}

void TestSession::ShowFile(const std::string& path) {
    const std::string name = ImageFileList::NamePart(path);
    view.SetCaption("Glyphor - " + name);
    std::string error;
    std::shared_ptr<const ZyrImage> image = loadImage ? loadImage(path, error) : nullptr;
    {
        std::lock_guard<std::mutex> lock(m_imageLock);
        m_currentFileName = name;
        m_loadError = image ? std::string() : error;
    }
    ShowImage(PictureId::Main, std::move(image));
    ++imageNumber;
}

std::shared_ptr<const ZyrImage> TestSession::Image(PictureId picture) const {
    std::lock_guard<std::mutex> lock(m_imageLock);
    return m_images[static_cast<int>(picture)];
}

void TestSession::ShowImage(PictureId picture, std::shared_ptr<const ZyrImage> image) {
    {
        std::lock_guard<std::mutex> lock(m_imageLock);
        // The old pixels may still be decoded elsewhere: whoever holds them keeps them alive.
        m_images[static_cast<int>(picture)] = image;
    }
    view.SetPictureImage(picture, std::move(image));
}

std::string TestSession::LoadError() const {
    std::lock_guard<std::mutex> lock(m_imageLock);
    return m_loadError;
}

void TestSession::SavePicturePng(PictureId picture, const std::string& path) {
    const std::shared_ptr<const ZyrImage> image = Image(picture);
    if (image && savePng) {
        savePng(picture, *image, path);
    }
}

std::string TestSession::CurrentFileName() const {
    std::lock_guard<std::mutex> lock(m_imageLock);
    return m_currentFileName;
}

void TestSession::NextImage() {
    StepNext();
    view.UpdateButtons();
}

void TestSession::StepNext() {
    if (const auto path = files.StepNext()) {
        ShowFile(*path);
    }
}

void TestSession::PreviousImage() {
    if (const auto path = files.StepPrevious()) {
        ShowFile(*path);
    }
    view.UpdateButtons();
}

