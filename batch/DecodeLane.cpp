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

DecodeLane::DecodeLane() = default;

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
    if (!m_session.Image(PictureId::Main)) {
        outcome.error = m_session.LoadError();
    } else {
        UnstoppableJob job;
        m_session.decode.DecodeImageJob(job);
    }
    outcome.rows.swap(m_rows);
    m_session.results.ClearData(); // each image starts again at row 0
    outcome.messages.swap(m_collector.messages);
    return outcome;
}

void DecodeLane::TakeRow() {
    std::optional<ResultRow> row = m_session.decode.TakeNextRow();
    if (!row) {
        return;
    }
    BatchRow batchRow;
    batchRow.row = std::move(*row);
    // Row i of this image owns decode data i.
    if (const std::optional<GLD_DecodeData> data = m_session.results.DataAt(static_cast<int>(m_rows.size()))) {
        batchRow.data.assign(data->str(), static_cast<size_t>(data->size()));
    }
    m_rows.push_back(std::move(batchRow));
}
