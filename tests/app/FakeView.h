// A SessionView without widgets: records what the session asks of the user interface.
#pragma once

#include "SessionView.h"
#include "TestSession.h"

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
    void SetPictureImage(PictureId, std::shared_ptr<const ZyrImage> image) override { shown = image.get(); }
    void ShowSideViews(bool sides) override { sideViews.push_back(sides); }
    void RedrawAll() override { ++redraws; }
    void ShowMessage(MessageKind kind, const std::string& text) override {
        messages.emplace_back(kind, text);
    }
    void UpdateButtons() override { ++buttonUpdates; }

    std::mutex mutex;
    int resultPosts = 0;
    int buttonUpdates = 0;
    int redraws = 0;
    std::vector<bool> sideViews;
    std::vector<std::string> captions;
    std::vector<std::string> loads;
    std::vector<std::string> savedPngs;
    std::vector<std::pair<MessageKind, std::string>> messages;
    std::map<std::string, const ZyrImage*> images;
    const ZyrImage* shown = nullptr;
};
