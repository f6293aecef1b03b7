// One test session that decodes images one at a time, with its own plug-in instances, so that
// several lanes decode in parallel (the reader library serialises calls to one plug-in
// instance). The lane drives the session directly: the session loads the file and owns its
// pixels, the lane takes the rows off it. Used by one thread at a time.
#pragma once

#include "ImageOutcome.h"
#include "TestSession.h"

#include <optional>
#include <string>
#include <vector>

class DecodeLane {
public:
    DecodeLane();
    DecodeLane(const DecodeLane&) = delete;
    DecodeLane& operator=(const DecodeLane&) = delete;

    // Loads every plug-in of the reader settings' plug-in folder.
    void LoadPlugins() { m_session.LoadPlugins(); }
    // Reads "Glyphor.ini" as the window does at start, which restores the saved selection.
    void LoadSavedSettings() { m_session.LoadSettings(); }

    const PluginCatalogue& Plugins() const { return m_session.plugins; }
    std::vector<std::string> SelectedNames() const;

    // Selects exactly the named plug-ins (decoded in list order). False, with unknown set to the
    // first name that no loaded plug-in has, when a name is unknown; the selection is then empty.
    bool Select(const std::vector<std::string>& names, std::string& unknown);

    // Opens the file as the session's only image and runs the Decode Image job on it.
    ImageOutcome Decode(const ImageInput& input);

    const DecodeStatistics& Statistics() const { return m_session.stats; }

private:
    // A session without a window shows nothing. Each row is taken as soon as it is posted, as the
    // window does (a symbol joins the first record still pending); messages are kept.
    class Collector : public SessionView {
    public:
        explicit Collector(DecodeLane& lane) : m_lane(lane) {}
        void PostShowNextResult() override { m_lane.TakeRow(); }
        void ShowMessage(MessageKind, const std::string& text) override { messages.push_back(text); }
        std::vector<std::string> messages;

    private:
        DecodeLane& m_lane;
    };

    void TakeRow();

    Collector m_collector{*this};
    TestSession m_session{m_collector};
    std::vector<BatchRow> m_rows; // of the image under way
};
