// Which image settings a capture uses: the selected plug-ins must all need the same image (by
// name) before a capture starts, and each cycle takes the record it captures with.
#pragma once

#include "ImageSettingsTable.h"
#include "PluginCatalogue.h"

class CaptureSettingsCheck {
public:
    static constexpr const char* kDifferentSettingsText =
        "All selected plugins must use the same image settings for image capture";
    static constexpr const char* kNoSettingsText =
        "The selected plugins either have no image settings, or "
        "different image settings. Unable to carry out image capture";

    // True when something is selected and the selected plug-ins that have image settings name
    // exactly one image among them (plug-ins without settings are passed over).
    static bool SameImageSettings(const PluginCatalogue& plugins, const ImageSettingsTable& table);

    // The record a cycle captures with: the first selected plug-in's when the check passes (null
    // when that plug-in has none), else the table's first record (null when the table is empty).
    static ZyrImageSettings* Choose(const PluginCatalogue& plugins, const ImageSettingsTable& table);
};
