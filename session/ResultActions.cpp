#include "ResultActions.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

bool ResultActions::HasData(const std::optional<GLD_DecodeData>& data) {
    if (data && data->size() > 0) {
        return true;
    }
    m_view.ShowMessage(MessageKind::Error, kNoDataText);
    return false;
}

void ResultActions::SaveDataAsBinary(const std::optional<GLD_DecodeData>& data) {
    if (!HasData(data)) {
        return;
    }
    const std::string path = m_ui.AskBinarySavePath();
    if (path.empty()) {
        return;
    }
    const std::string failure = WriteFile(path, data->str(), static_cast<size_t>(data->size()));
    if (!failure.empty()) {
        m_view.ShowMessage(MessageKind::Exclamation, "Cannot save data to " + path + ": " + failure);
        return;
    }
    m_view.ShowMessage(MessageKind::Info, kSavedText + path);
}

void ResultActions::ParseAsAamva(const std::optional<GLD_DecodeData>& data) {
    if (!HasData(data)) {
        return;
    }
    std::unique_ptr<AamvaViewer> viewer = m_ui.MakeAamvaViewer();
    const int32_t code = viewer->Parse(reinterpret_cast<const uint8_t*>(data->str()), data->size());
    if (code != 0) {
        char text[128];
        std::snprintf(text, sizeof text, kParseFailedFormat, code);
        m_view.ShowMessage(MessageKind::Exclamation, text);
        return;
    }
    viewer->ShowModal();
}

std::string ResultActions::WriteFile(const std::string& path, const char* bytes, size_t length) {
    const int fd = ::open(path.c_str(), O_CREAT | O_WRONLY | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) {
        return std::strerror(errno);
    }
    const char* next = bytes;
    size_t left = length;
    std::string failure;
    while (left > 0) {
        const ssize_t written = ::write(fd, next, left);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            failure = std::strerror(errno);
            break;
        }
        next += written;
        left -= static_cast<size_t>(written);
    }
    if (::close(fd) != 0 && failure.empty()) {
        failure = std::strerror(errno);
    }
    return failure;
}
