// Parses an AAMVA DL/ID card data stream (versions 0 to 10; later versions as 10) into an
// AamvaDocument. Tolerates what real cards and scanners do to the data: leading bytes, mangled
// or missing control bytes (keyboard-wedge letters included), "ANSI" without its space or with
// two, headers of the wrong layout, CR LF, missing terminators, designators with wrong numbers,
// subfiles without their type, padding and trailing junk. The data is trusted over the header.
#ifndef ZYR_AAMVA_PARSER_H
#define ZYR_AAMVA_PARSER_H

#include "AamvaDocument.h"

#include <cstddef>
#include <cstdint>

namespace zyr {

class AamvaParser {
public:
    // ZYR_OK with document filled, or ZYR_ERR_AAMVA_EMPTY (no bytes, or only blanks),
    // ZYR_ERR_NOT_AAMVA or ZYR_ERR_AAMVA_TRUNCATED. Reads only data[0, length).
    // Each repair made to off-standard data is noted in document.repairs.
    static int32_t parse(const uint8_t* data, std::size_t length, AamvaDocument& document);
};

} // namespace zyr

#endif
