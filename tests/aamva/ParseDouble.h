// Stands in for the reader library's parser: answers from a script and logs every call, so the
// viewer's parse step can be checked call by call without the real library.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <deque>
#include <string>
#include <vector>

namespace ParseDouble {

struct Script {
    bool initialised = false;   // what ZyrReader_IsParsingInitialised answers at first
    int32_t initialiseCode = 0; // what ZyrReader_ParseInitialise returns (0 also marks it initialised)
    // Codes for successive ZyrReader_ParseAAMVA calls; when empty, 0.
    std::deque<int32_t> parseCodes;
    // On success the double hands out a copy of this record.
    const AAMVARecord* record = nullptr;
};

// Resets the double: new script, empty log. Records still held from before count as leaked.
void Reset(const Script& script);
// The running script, for a test that changes the library's answers between calls.
Script& Current();
// "IsParsingInitialised", "ParseInitialise", "ParseAAMVA <length>", "Destroy", "Destroy unknown".
const std::vector<std::string>& Log();
// Records handed out and not yet destroyed.
int Outstanding();

} // namespace ParseDouble

