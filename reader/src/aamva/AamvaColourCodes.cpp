#include "AamvaColourCodes.h"

#include "AamvaText.h"
#include "ZyrReaderLowLevelAPI.h"

namespace zyr {
namespace {

struct Spelling {
    const char* text;
    int32_t code;
};

const Spelling kHair[] = {
    {"BAL", AAMVA_HAIR_BALD},   {"BLD", AAMVA_HAIR_BALD},    {"BALD", AAMVA_HAIR_BALD},
    {"BLK", AAMVA_HAIR_BLACK},  {"BLACK", AAMVA_HAIR_BLACK}, {"BLN", AAMVA_HAIR_BLOND},
    {"BLO", AAMVA_HAIR_BLOND},  {"BLOND", AAMVA_HAIR_BLOND}, {"BLONDE", AAMVA_HAIR_BLOND},
    {"BRO", AAMVA_HAIR_BROWN},  {"BRN", AAMVA_HAIR_BROWN},   {"BR", AAMVA_HAIR_BROWN},
    {"BN", AAMVA_HAIR_BROWN},   {"BROWN", AAMVA_HAIR_BROWN}, {"GRY", AAMVA_HAIR_GREY},
    {"GREY", AAMVA_HAIR_GREY},  {"GRAY", AAMVA_HAIR_GREY},   {"RED", AAMVA_HAIR_RED},
    {"AUBURN", AAMVA_HAIR_RED}, {"SDY", AAMVA_HAIR_SANDY},   {"SANDY", AAMVA_HAIR_SANDY},
    {"WHI", AAMVA_HAIR_WHITE},  {"WHITE", AAMVA_HAIR_WHITE}, {"UNK", AAMVA_HAIR_UNKNOWN},
};

const Spelling kEye[] = {
    {"BLK", AAMVA_EYE_BLACK},
    {"BLACK", AAMVA_EYE_BLACK},
    {"BLU", AAMVA_EYE_BLUE},
    {"BL", AAMVA_EYE_BLUE},
    {"BLUE", AAMVA_EYE_BLUE},
    {"BRO", AAMVA_EYE_BROWN},
    {"BRN", AAMVA_EYE_BROWN},
    {"BR", AAMVA_EYE_BROWN},
    {"BN", AAMVA_EYE_BROWN},
    {"BROWN", AAMVA_EYE_BROWN},
    {"GRY", AAMVA_EYE_GREY},
    {"GREY", AAMVA_EYE_GREY},
    {"GRAY", AAMVA_EYE_GREY},
    {"GRN", AAMVA_EYE_GREEN},
    {"GREEN", AAMVA_EYE_GREEN},
    {"HAZ", AAMVA_EYE_HAZEL},
    {"HZL", AAMVA_EYE_HAZEL},
    {"HZ", AAMVA_EYE_HAZEL},
    {"HAZEL", AAMVA_EYE_HAZEL},
    {"MAR", AAMVA_EYE_MAROON},
    {"MAROON", AAMVA_EYE_MAROON},
    {"PNK", AAMVA_EYE_PINK},
    {"PINK", AAMVA_EYE_PINK},
    {"DIC", AAMVA_EYE_DICHROMATIC},
    {"DICHROMATIC", AAMVA_EYE_DICHROMATIC},
    {"UNK", AAMVA_EYE_UNKNOWN},
};

template <std::size_t N> int32_t lookUp(const Spelling (&table)[N], std::string_view value, int32_t unknown) {
    value = AamvaText::trim(value);
    if (AamvaText::isPlaceholder(value))
        return -1;
    for (const Spelling& s : table)
        if (AamvaText::equalsUpper(value, s.text))
            return s.code;
    return unknown;
}

} // namespace

int32_t AamvaColourCodes::hair(std::string_view value) {
    return lookUp(kHair, value, AAMVA_HAIR_UNKNOWN);
}

int32_t AamvaColourCodes::eye(std::string_view value) {
    return lookUp(kEye, value, AAMVA_EYE_UNKNOWN);
}

} // namespace zyr
