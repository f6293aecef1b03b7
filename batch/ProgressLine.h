// A progress line on a terminal for long runs: images done, the rate and the current image,
// redrawn in place at most a few times a second and only once the run has lasted a moment.
#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>
#include <string>

class ProgressLine {
public:
    using Clock = std::chrono::steady_clock;

    // Draws nothing when not enabled.
    ProgressLine(std::ostream& out, bool enabled, size_t total);

    // done images of total finished; name is the last one.
    void Update(size_t done, const std::string& name);
    void Update(size_t done, const std::string& name, Clock::time_point now);

    // Erases the line, before other output goes to the same terminal and at the end.
    void Clear();

    bool Shown() const { return m_shown; }

    static constexpr std::chrono::milliseconds kFirstDelay{1000};
    static constexpr std::chrono::milliseconds kInterval{200};

private:
    std::ostream& m_out;
    bool m_enabled;
    size_t m_total;
    Clock::time_point m_start;
    Clock::time_point m_lastDraw;
    bool m_shown = false; // on the terminal now
    bool m_drawn = false; // drawn at least once
};
