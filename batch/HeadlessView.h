// The session's user interface without a window: the main picture is an image loaded from a
// file, rows are collected as the session hands them over, messages are kept for the caller.
// Used by one thread.
#pragma once

#include "BatchRow.h"
#include "SessionView.h"

#include <memory>
#include <string>
#include <vector>

class TestSession;

class HeadlessView : public SessionView {
public:
    // The session whose rows this view takes; set once, before any decode.
    void Attach(TestSession& session) { m_session = &session; }

    // Why the last file given to the main picture could not be loaded; empty when it was.
    const std::string& LoadError() const { return m_loadError; }

    // Rows and messages gathered since the last call. The session's decode data list is
    // emptied, so each image starts again at row 0.
    std::vector<BatchRow> TakeRows();
    std::vector<std::string> TakeMessages();

    void PostShowNextResult() override;
    void PostShowNextImage() override;
    void SetCaption(const std::string&) override {}
    void LoadPictureFile(PictureId picture, const std::string& path) override;
    // Captured images never reach a headless session.
    void SetPictureImage(PictureId, const ZyrImage*) override {}
    void SavePicturePng(PictureId, const std::string&) override {}
    std::shared_ptr<const ZyrImage> PictureImage(PictureId picture) override;
    // No windows to arrange or repaint: captures do not run headless.
    void ShowSideViews(bool) override {}
    void RedrawAll() override {}
    void ShowMessage(MessageKind kind, const std::string& text) override;
    void UpdateButtons() override {}

private:
    TestSession* m_session = nullptr;
    std::shared_ptr<const ZyrImage> m_image;
    std::string m_loadError;
    std::vector<BatchRow> m_rows;
    std::vector<std::string> m_messages;
};
