// Which action buttons of the main window are enabled in a given session state.
#pragma once

#include <cstdint>

struct ButtonInputs {
    bool busy = false;             // a job is running
    bool scannerConnected = false; // a reader was found at start-up
    int64_t imageCount = 0;        // files in the image file list
    int32_t currentIndex = 0;      // index of the file on show
};

struct ButtonStates {
    bool captureMulti = false;
    bool capture = false;
    bool openImage = false;
    bool next = false;
    bool previous = false;
    bool decodeImage = false;
    bool decodeMulti = false;

    bool operator==(const ButtonStates& o) const {
        return captureMulti == o.captureMulti && capture == o.capture && openImage == o.openImage &&
               next == o.next && previous == o.previous && decodeImage == o.decodeImage &&
               decodeMulti == o.decodeMulti;
    }
};

ButtonStates ComputeButtonStates(const ButtonInputs& in);
