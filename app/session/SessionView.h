// What the session logic needs of the user interface. The main window implements it with
// widgets; tests implement it with recorders. Calls marked "any thread" may come from a job's
// worker and must be carried to the user-interface thread by the implementation.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <memory>
#include <string>

// The three picture views of the main window.
enum class PictureId { Main, Side1, Side2 };

enum class MessageKind {
    Plain,       // application name as title, no icon
    Exclamation, // application name as title, warning icon
    Error,       // title "Error", warning icon
    Info         // title "Info", information icon
};

class SessionView {
public:
    virtual ~SessionView() = default;

    // Any thread: queue "show the next pending result" / "show the next image" for the
    // user-interface thread, in the order posted.
    virtual void PostShowNextResult() = 0;
    virtual void PostShowNextImage() = 0;

    // Any thread: window caption.
    virtual void SetCaption(const std::string& text) = 0;

    // Any thread: picture views (each guards its own image).
    virtual void LoadPictureFile(PictureId picture, const std::string& path) = 0;
    virtual void SetPictureImage(PictureId picture, const ZyrImage* image) = 0;
    virtual void SavePicturePng(PictureId picture, const std::string& path) = 0;
    // The picture's current pixels, kept alive while the result is held; null when empty.
    virtual std::shared_ptr<const ZyrImage> PictureImage(PictureId picture) = 0;

    // Any thread: on a two-sided capture with crop the two side views replace the whole-document
    // view (sides true: whole view hidden and disabled, side views shown and enabled); without
    // crop the reverse.
    virtual void ShowSideViews(bool sides) = 0;
    // Any thread: the whole window is repainted.
    virtual void RedrawAll() = 0;

    // Any thread: a message box; returns when the user has closed it.
    virtual void ShowMessage(MessageKind kind, const std::string& text) = 0;

    // User-interface thread: recompute which buttons are enabled.
    virtual void UpdateButtons() = 0;
};
