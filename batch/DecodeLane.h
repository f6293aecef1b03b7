// One test session that decodes images one at a time, with its own plug-in instances, so that
// several lanes decode in parallel (the reader library serialises calls to one plug-in
// instance). Used by one thread at a time.
#pragma once

#include "HeadlessView.h"
#include "ImageOutcome.h"
#include "TestSession.h"

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
    HeadlessView m_view;
    TestSession m_session{m_view};
};
