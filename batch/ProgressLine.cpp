#include "ProgressLine.h"

#include <cstdio>

ProgressLine::ProgressLine(std::ostream& out, bool enabled, size_t total)
    : m_out(out), m_enabled(enabled), m_total(total), m_start(Clock::now()), m_lastDraw(m_start) {}

void ProgressLine::Update(size_t done, const std::string& name) {
    Update(done, name, Clock::now());
}

void ProgressLine::Update(size_t done, const std::string& name, Clock::time_point now) {
    if (!m_enabled || now - m_start < kFirstDelay || (m_drawn && now - m_lastDraw < kInterval)) {
        return;
    }
    const double seconds = std::chrono::duration<double>(now - m_start).count();
    char text[96];
    std::snprintf(text, sizeof text, "[%zu/%zu] %.1f images/s ", done, m_total,
                  seconds > 0 ? static_cast<double>(done) / seconds : 0.0);
    // Short enough for a narrow terminal, so the line never wraps.
    std::string shortName = name.size() > 40 ? "..." + name.substr(name.size() - 37) : name;
    // "\r" to the line's start, ESC [K erases what is left of the previous drawing.
    m_out << '\r' << text << shortName << "\x1b[K" << std::flush;
    m_shown = true;
    m_drawn = true;
    m_lastDraw = now;
}

void ProgressLine::Clear() {
    if (m_shown) {
        m_out << "\r\x1b[K" << std::flush;
        m_shown = false;
    }
}
