// Spreads the images over the lanes, one thread per lane, and hands each outcome to the caller
// on the calling thread in input order, as soon as it and every earlier one are done.
#pragma once

#include "DecodeLane.h"
#include "ImageInput.h"
#include "ImageOutcome.h"

#include <functional>
#include <vector>

class BatchRunner {
public:
    using Sink = std::function<void(ImageOutcome&& outcome)>;

    // Each lane must have its plug-ins loaded and selected. Returns when every image is done.
    static void Run(const std::vector<DecodeLane*>& lanes, const std::vector<ImageInput>& inputs,
                    const Sink& sink);
};
