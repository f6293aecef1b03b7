// A SessionView without widgets that records what the session asks of the user interface, a job
// the test stops, and a session over the reader double with folders of its own.
#pragma once

#include "JobContext.h"
#include "ReaderDouble.h"
#include "SessionView.h"
#include "TempFolder.h"
#include "TestSession.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <map>
#include <mutex>
#include <vector>

class FakeView : public SessionView {
public:
    // Makes loading path give image (the test keeps the image alive).
    void Provide(const std::string& path, const ZyrImage* image) { images[path] = image; }
    // The session's file loader over the provided images; records each load.
    TestSession::ImageLoader Loader() {
        return [this](const std::string& path, std::string& error) -> std::shared_ptr<const ZyrImage> {
            loads.push_back(path);
            auto it = images.find(path);
            if (it == images.end()) {
                error = "not provided";
                return nullptr;
            }
            return std::shared_ptr<const ZyrImage>(it->second, [](const ZyrImage*) {}); // not owning
        };
    }
    // The session's PNG writer as a recorder of the paths.
    TestSession::PngSaver PngRecorder() {
        return [this](PictureId, const ZyrImage&, const std::string& path) { savedPngs.push_back(path); };
    }

    void PostShowNextResult() override {
        std::lock_guard<std::mutex> lock(mutex);
        ++resultPosts;
    }
    void SetCaption(const std::string& text) override { captions.push_back(text); }
    void SetPictureImage(PictureId picture, std::shared_ptr<const ZyrImage> image) override {
        sets.emplace_back(picture, image.get());
    }
    void ShowSideViews(bool sides) override { sideViews.push_back(sides); }
    void RedrawAll() override { ++redraws; }
    void ShowMessage(MessageKind kind, const std::string& text) override {
        messages.emplace_back(kind, text);
        if (onMessage)
            onMessage();
    }
    void UpdateButtons() override { ++buttonUpdates; }

    std::mutex mutex;
    int resultPosts = 0, buttonUpdates = 0, redraws = 0;
    std::vector<bool> sideViews;
    std::vector<std::string> captions, loads, savedPngs;
    std::vector<std::pair<MessageKind, std::string>> messages;
    std::function<void()> onMessage;
    std::vector<std::pair<PictureId, const ZyrImage*>> sets; // images shown, by picture
    std::map<std::string, const ZyrImage*> images;
};

class FakeJob : public JobContext {
public:
    bool IsStopped() const override { return stopped || (stopWhen && stopWhen()); }
    void SetStatusText(const std::string& text) override { statusTexts.push_back(text); }
    bool stopped = false;
    std::function<bool()> stopWhen;
    std::vector<std::string> statusTexts;
};

// The reader double and the reader session reset, plug-in and application folders of the test's own.
class SessionFixture : public ::testing::Test {
protected:
    SessionFixture() {
        readerdouble::Reset();
        ReaderSession::Reset();
        SetFolder(ReaderSession::Settings().PluginFolder, plugins.path());
        SetFolder(ReaderSession::Settings().ApplicationFolder, appFolder.path());
    }
    ~SessionFixture() override { ReaderSession::Reset(); }
    static void SetFolder(char* field, const std::string& path) { std::snprintf(field, ZYR_PATH_SIZE, "%s", path.c_str()); }
    // Plug-in files the double answers for, loaded into the session: all selected, or as given.
    void Install(std::vector<readerdouble::PluginScript> scripts, std::vector<bool> selected = {}) {
        for (const readerdouble::PluginScript& script : scripts) {
            plugins.write(script.fileName, "");
            readerdouble::AddPlugin(script);
        }
        session.LoadPlugins();
        for (size_t i = 0; i < session.plugins.Entries().size(); ++i)
            session.plugins.SetSelected(i, selected.empty() || selected[i]);
    }

    TempFolder plugins;
    TempFolder appFolder;
    FakeView view;
    TestSession session{view};
    FakeJob job;
};
