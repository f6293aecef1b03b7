// The header of an AAMVA card data stream as found, before the subfiles.
#ifndef ZYR_AAMVA_HEADER_H
#define ZYR_AAMVA_HEADER_H

#include "ZyrReaderLowLevelAPI.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zyr {

// One subfile designator: type, then offset and length as declared (often wrong on real cards).
struct AamvaDesignator {
    std::string type;    // "DL", "ID", "EN" or "Z" + a letter
    int32_t offset = -1; // -1 when the field is not a number
    int32_t length = -1;
};

struct AamvaHeader {
    std::size_t start = 0;        // where the compliance indicator (or the file type, without one) is
    char complianceIndicator = 0; // '@', or 0 when the data has none
    char elementSeparator = '\n'; // taken from the header when it is a control or punctuation byte
    char recordSeparator = 0;     // as found, 0 when missing
    char segmentTerminator = '\r';
    bool terminatorTyped = false; // a keyboard-wedge scanner typed CR as "M" (Ctrl-M without Ctrl)
    std::string fileType;         // "ANSI ", "AAMVA", or whatever variant the card wrote
    std::string iin;              // six digits
    uint32_t version = AAMVA_NOT_PRESENT;
    uint32_t jurisdictionVersion = AAMVA_NOT_PRESENT; // not present in the 19-byte layout
    int32_t entryCount = -1;                          // -1 when the header has no readable count
    bool shortLayout = false;                         // 19-byte layout of version 1 (no jurisdiction version)
    std::vector<AamvaDesignator> designators;
    std::size_t bodyStart = 0; // first byte after the designators
};

} // namespace zyr

#endif
