// What the export tests share: the golden files' folder, saving from a string, the XML check.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <string>

extern const std::string kData;

// Runs the system's XML parser on the file; empty when it is well-formed, else its complaint.
std::string XmlProblems(const std::string& path);

// Whether the exported file holds this whole line (CR LF on both sides).
bool HasLine(const std::string& file, const std::string& line);
