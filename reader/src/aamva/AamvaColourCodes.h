// Hair and eye colour codes (AAMVA_HAIR_*, AAMVA_EYE_*) from the card's text: the standard
// three-letter codes, the two-letter and misspelt codes older cards use, and whole words.
#ifndef ZYR_AAMVA_COLOUR_CODES_H
#define ZYR_AAMVA_COLOUR_CODES_H

#include <cstdint>
#include <string_view>

namespace zyr {

class AamvaColourCodes {
public:
    // -1 for a blank or placeholder value; the UNKNOWN code for text that names no colour.
    static int32_t hair(std::string_view value);
    static int32_t eye(std::string_view value);
};

} // namespace zyr

#endif
