// The application object: one run of the program. InitInstance opens the reader session, runs
// the main window modally and shuts the session down again; it returns false, so the program
// ends with the window.
#pragma once

#include <functional>
#include <string>

class CGlyphorDlg;

class CGlyphorApp {
public:
    // How the main window is run; exec() by default. Tests replace it.
    using DialogRunner = std::function<void(CGlyphorDlg& dialog)>;

    bool InitInstance();
    void SetDialogRunner(DialogRunner runner) { m_runDialog = std::move(runner); }
    // Where reader library errors are shown; ShowLibraryMessage by default. Tests replace it.
    void SetLibraryMessageSink(std::function<void(const std::string&)> sink) {
        m_librarySink = std::move(sink);
    }

    // Shows a reader library error in a plain message box, from any thread; a worker waits
    // until the user has closed it.
    static void ShowLibraryMessage(const std::string& text);

private:
    DialogRunner m_runDialog;
    std::function<void(const std::string&)> m_librarySink;
};
