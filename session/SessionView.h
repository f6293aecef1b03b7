// What the session logic needs of the user interface. The main window implements it with
// widgets; tests implement it with recorders; a session without a window (the batch) keeps the
// defaults, which show nothing. Calls marked "any thread" may come from a job's worker and must be
// carried to the user-interface thread by the implementation.
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

    // Any thread: queue "show the next pending result" for the user-interface thread, in the
    // order posted.
    virtual void PostShowNextResult() {}

    // Any thread: window caption.
    virtual void SetCaption(const std::string& /*text*/) {}

    // Any thread: a picture view shows a copy of the session's pixels (null: empty). The session
    // keeps the pixels it decodes and saves; the view only displays (it may take its copy later,
    // on its own thread: the shared pixels stay alive until then).
    virtual void SetPictureImage(PictureId /*picture*/, std::shared_ptr<const ZyrImage> /*image*/) {}

    // Any thread: on a two-sided capture with crop the two side views replace the whole-document
    // view (sides true: whole view hidden and disabled, side views shown and enabled); without
    // crop the reverse.
    virtual void ShowSideViews(bool /*sides*/) {}
    // Any thread: the whole window is repainted.
    virtual void RedrawAll() {}

    // Any thread: a message box; returns when the user has closed it.
    virtual void ShowMessage(MessageKind /*kind*/, const std::string& /*text*/) {}

    // User-interface thread: recompute which buttons are enabled.
    virtual void UpdateButtons() {}
};
