// The result of decoding one input image with every selected plug-in.
#pragma once

#include "BatchRow.h"
#include "ImageInput.h"

#include <string>
#include <vector>

struct ImageOutcome {
    ImageInput input;
    std::string error;                 // why the image could not be read; empty when it was
    std::vector<BatchRow> rows;        // one per selected plug-in, in list order
    std::vector<std::string> messages; // what the session asked to show the user meanwhile
};
