#include "JobControl.h"

#include "ZyrReaderLowLevelAPI.h"

void JobControl::Begin() {
    m_stopped = false;
    SetStatusSink(nullptr);
}

void JobControl::SetStatusSink(StatusSink sink) {
    std::lock_guard<std::mutex> lock(m_sinkLock);
    m_sink = std::move(sink);
}

void JobControl::Stop() {
    m_stopped = true;
    ZyrReader_CameraCancelQueue();
}

void JobControl::SetStatusText(const std::string& text) {
    std::lock_guard<std::mutex> lock(m_sinkLock);
    if (m_sink) {
        m_sink(text);
    }
}
