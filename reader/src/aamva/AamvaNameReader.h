// Assembles the card holder's name from whichever name elements the card has: the separate
// elements of 2009 and later (DCS, DAC, DAD, DCU), the family and given names of 2003/2005 (DCS,
// DCT), or the version 1 elements (DAB..DAE) with the full name (DAA) as the last resort. Some
// cards put the whole name in the family name element ("LAST,FIRST,MIDDLE").
#ifndef ZYR_AAMVA_NAME_READER_H
#define ZYR_AAMVA_NAME_READER_H

#include "AamvaRepairs.h"

#include <string>
#include <string_view>

namespace zyr {

struct AamvaName {
    std::string full; // DAA as written, else built from the parts
    std::string surname;
    std::string forename;
    std::string middle; // several middle names separated by spaces
    std::string suffix;
    std::string given; // forename and middle names
};

// Raw values of the name elements; empty when the card lacks one.
struct AamvaNameElements {
    std::string_view daa, dab, dac, dad, dae, dcs, dct, dcu;
};

class AamvaNameReader {
public:
    // Names taken apart against the standard (a full name in the family name element, trailing
    // commas) are noted in repairs when given.
    static AamvaName read(const AamvaNameElements& elements, AamvaRepairs* repairs = nullptr);

    // JR, SR, 1ST..9TH, II..IX.
    static bool isSuffix(std::string_view word);

private:
    static void splitFullName(std::string_view full, AamvaName& name);
    static void splitGivenNames(std::string_view given, AamvaName& name);
};

} // namespace zyr

#endif
