#pragma once

#include "ImageFiles.h"
#include "SampleCatalogue.h"

#include <string>

namespace glyphor::samples {

// Draws a sample's symbols onto its card. False (and the reason) when a symbol cannot be encoded
// or does not fit the card, which is a fault of the catalogue.
bool renderSample(const Sample& sample, RasterImage& image, std::string& error);

// Writes the image in the sample's file type.
bool writeSample(const std::string& path, const Sample& sample, const RasterImage& image);

} // namespace glyphor::samples
