// Parses an AAMVA DL/ID card data stream (versions 0 to 10; later versions as 10) into an
// AamvaDocument. Tolerates what real cards and scanners do to the data: leading bytes, mangled
// or missing control bytes, "ANSI" without its space, CR LF, missing terminators, designators
// with wrong numbers, subfiles without their type, padding and trailing junk.
#ifndef ZYR_AAMVA_PARSER_H
#define ZYR_AAMVA_PARSER_H

#include "AamvaDocument.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zyr {

class AamvaParser {
public:
    // ZYR_OK with document filled, or ZYR_ERR_AAMVA_EMPTY (no bytes, or only blanks),
    // ZYR_ERR_NOT_AAMVA or ZYR_ERR_AAMVA_TRUNCATED. Reads only data[0, length).
    static int32_t parse(const uint8_t* data, std::size_t length, AamvaDocument& document);

private:
    static bool endsEarly(const AamvaDocument& document, std::size_t originalLength);
    static bool endsInAnnouncedSubfile(const AamvaDocument& document, std::string_view data);
};

} // namespace zyr

#endif
