#include "DecodeLane.h"

#include "JobContext.h"

namespace {

// Nobody presses Stop in a batch run.
class UnstoppableJob : public JobContext {
public:
    bool IsStopped() const override { return false; }
    void SetStatusText(const std::string&) override {}
};

} // namespace

DecodeLane::DecodeLane() {
    m_view.Attach(m_session);
}

std::vector<std::string> DecodeLane::SelectedNames() const {
    std::vector<std::string> names;
    for (const PluginEntry& entry : m_session.plugins.SelectedEntries()) {
        names.push_back(entry.name);
    }
    return names;
}

bool DecodeLane::Select(const std::vector<std::string>& names, std::string& unknown) {
    const std::vector<PluginEntry>& entries = m_session.plugins.Entries();
    std::vector<bool> chosen(entries.size(), false);
    unknown.clear();
    for (const std::string& name : names) {
        bool found = false;
        for (size_t i = 0; i < entries.size() && !found; ++i) {
            if (entries[i].name == name) {
                chosen[i] = true;
                found = true;
            }
        }
        if (!found) {
            unknown = name;
            chosen.assign(entries.size(), false);
            break;
        }
    }
    for (size_t i = 0; i < entries.size(); ++i) {
        m_session.plugins.SetSelected(i, chosen[i]);
    }
    return unknown.empty();
}

ImageOutcome DecodeLane::Decode(const ImageInput& input) {
    ImageOutcome outcome;
    outcome.input = input;
    m_session.OpenImages({input.path}, 0);
    if (!m_view.LoadError().empty()) {
        outcome.error = m_view.LoadError();
    } else {
        UnstoppableJob job;
        m_session.decode.DecodeImageJob(job);
    }
    outcome.rows = m_view.TakeRows();
    outcome.messages = m_view.TakeMessages();
    return outcome;
}
