#include "ButtonRules.h"

ButtonStates ComputeButtonStates(const ButtonInputs& in) {
    ButtonStates s;
    if (in.busy) {
        return s;
    }
    s.openImage = true;
    s.capture = s.captureMulti = in.scannerConnected;
    if (in.imageCount > 0) {
        // The index is compared with the 64-bit count after sign extension.
        s.next = static_cast<int64_t>(in.currentIndex) < in.imageCount - 1;
        s.previous = in.currentIndex > 0;
        s.decodeImage = s.decodeMulti = true;
    }
    return s;
}
