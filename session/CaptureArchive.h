// Files a captured image by outcome: a folder per plug-in that decoded it, or "Failed", inside
// the application folder, each image named by the full image number.
#pragma once

#include <string>

class TestSession;

class CaptureArchive {
public:
    explicit CaptureArchive(TestSession& session) : m_session(session) {}

    // Saves the main picture as "<application folder><folderName>/<image number>.png" and sets
    // the caption to "Glyphor - <image number>.png".
    void Archive(const std::string& folderName);

private:
    TestSession& m_session;
};
