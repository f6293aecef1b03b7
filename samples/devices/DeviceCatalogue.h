#pragma once

#include "SampleCatalogue.h"

#include <optional>
#include <string>
#include <vector>

namespace glyphor::samples {

// One document in a virtual reader: its card (and back side), and how it lies on the platen.
struct DeviceDocument {
    std::string name;           // file name stem in documents/
    Sample front;               // the card's first side (its symbols, size and drawing)
    std::optional<Sample> back; // the second side, for two-sided readers
    double angle = 0;           // clockwise tilt on the platen, degrees
    int offsetX = 0;            // card position relative to the platen's centre, pixels
    int offsetY = 0;
};

// A virtual reader folder: device.ini plus documents/.
struct DeviceSample {
    std::string name; // folder name under samples/devices/
    bool twoSided = false;
    std::vector<DeviceDocument> documents; // in name order
};

// Every device the generator writes.
const std::vector<DeviceSample>& deviceCatalogue();
const DeviceSample* findDevice(const std::string& name);

// The device.ini of a device.
std::string deviceIni(const DeviceSample& device);

// Platen size around one card side and the platen's grey level.
constexpr int kPlatenWidth = 1200;
constexpr int kPlatenHeight = 840;
constexpr uint8_t kPlatenLevel = 28;

} // namespace glyphor::samples
