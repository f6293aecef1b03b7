#include "CaptureArchive.h"

#include "SessionPaths.h"
#include "TestSession.h"

#include <filesystem>

void CaptureArchive::Archive(const std::string& folderName) {
    const ZyrReaderSettings& reader = ReaderSession::Settings();
    const std::string folder =
        SessionPaths::FolderWithSeparator(reader.ApplicationFolder, sizeof reader.ApplicationFolder) +
        folderName + "/";
    std::error_code ignored; // an existing folder is simply reused
    std::filesystem::create_directory(folder, ignored);
    const std::string number = std::to_string(m_session.imageNumber.load());
    m_session.SavePicturePng(PictureId::Main, folder + number + ".png");
    m_session.view.SetCaption("Glyphor - " + number + ".png");
}
