// The state of one test session, owned by the main window: image number, image files, plug-ins
// and their image settings, results, statistics, the decode event and the busy flag, with the
// operations on them that need no widgets. The window reaches the user through SessionView.
#pragma once

#include "ButtonRules.h"
#include "CaptureArchive.h"
#include "DecodeRunner.h"
#include "DecodeStatistics.h"
#include "ImageFileList.h"
#include "ImageFileLoader.h"
#include "ImageSettingsTable.h"
#include "JobControl.h"
#include "PluginCatalogue.h"
#include "ReaderSession.h"
#include "ResultStore.h"
#include "SessionView.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class TestSession {
public:
    explicit TestSession(SessionView& view);
    TestSession(const TestSession&) = delete;
    TestSession& operator=(const TestSession&) = delete;

    SessionView& view;
    std::atomic<int32_t> imageNumber{0};   // grows with every image shown or captured
    std::atomic<bool> busy{false};         // a job runs
    bool scannerConnected = true;          // copy of the application's flag, fixed at start
    std::atomic<bool> dataReceived{false}; // a symbol arrived during the current plug-in call
    std::string executableFolder;          // where the settings are saved, ending in "/"
    // Check boxes, moved into the session on the user-interface thread before a job starts.
    std::atomic<bool> useVisibleImage{true};
    std::atomic<bool> crop{false};
    std::atomic<int> darkObjectDetect{0}; // check state: 0 clear, 1 checked
    DecodeStatistics stats;
    ImageFileList files;
    ImageSettingsTable imageSettings;
    PluginCatalogue plugins;
    ResultStore results;
    JobControl job; // of the job under way
    DecodeRunner decode{*this};
    CaptureArchive archive{*this};

    // How image files become pixels; tests put their own pictures here.
    using ImageLoader = std::function<std::shared_ptr<const ZyrImage>(const std::string& path, std::string& error)>;
    ImageLoader loadImage = &ImageFileLoader::Load;
    // How a picture's pixels become a PNG file (failures are silent); tests record instead.
    using PngSaver = std::function<void(PictureId picture, const ZyrImage& image, const std::string& path)>;
    PngSaver savePng = [](PictureId, const ZyrImage& image, const std::string& path) {
        ImageFileLoader::SavePng(image, path);
    };

    // Any thread: the pixels a picture shows, owned by the session and alive while the caller
    // holds them, whatever is shown next; null when the picture is empty.
    std::shared_ptr<const ZyrImage> Image(PictureId picture) const;
    // Any thread: makes image the picture's pixels and has the view show them.
    void ShowImage(PictureId picture, std::shared_ptr<const ZyrImage> image);
    // Any thread: saves the session's pixels of a picture as PNG; an empty picture saves nothing.
    void SavePicturePng(PictureId picture, const std::string& path);
    // Why the last file shown could not be read; empty when it was.
    std::string LoadError() const;
    // Any thread: name part of the file on show (kept when a capture replaces the picture).
    std::string CurrentFileName() const;

    ButtonStates Buttons() const;

    // Plug-ins of the reader settings' plug-in folder.
    void LoadPlugins();

    // "Glyphor.ini" from the reader settings' application folder; a missing or broken file
    // leaves the defaults (and whatever was read before the break).
    void LoadSettings();
    // "Glyphor.ini" next to the executable; failures are silent.
    void SaveSettings();
    static constexpr const char* kSettingsFile = "Glyphor.ini";
    static constexpr const char* kSection = "Previous_State";

    // Hands the dark-object-detect check state to the camera; a refusal is shown to the user.
    void ApplyDarkObjectDetect(int checkState);

    // After the open dialog's OK: the chosen paths and filter; shows the first file.
    void OpenImages(const std::vector<std::string>& paths, uint32_t filterIndex);
    // Caption, current file name, main picture and image number for one file.
    void ShowFile(const std::string& path);
    void NextImage();
    void PreviousImage();
    // Any thread (Decode Multi's job): shows the next file without touching the buttons.
    void StepNext();

private:
    mutable std::mutex m_imageLock;
    std::shared_ptr<const ZyrImage> m_images[3]; // by PictureId
    std::string m_loadError;
    std::string m_currentFileName;
};
