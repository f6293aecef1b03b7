// Descriptive names of the AAMVA data elements. A few IDs changed meaning between versions of
// the standard (DBG, DBN, DBS; the address elements of version 1 are mailing addresses), so the
// name depends on the version.
#ifndef ZYR_AAMVA_ELEMENT_CATALOGUE_H
#define ZYR_AAMVA_ELEMENT_CATALOGUE_H

#include <cstdint>
#include <string_view>

namespace zyr {

class AamvaElementCatalogue {
public:
    // Name of an element in a card of the given version (AAMVA_NOT_PRESENT = newest). IDs the
    // standard does not define are "Jurisdiction-specific element" (Z...) or "Unknown element".
    static const char* name(std::string_view id, uint32_t version);

    static constexpr const char* kJurisdictionElement = "Jurisdiction-specific element";
    static constexpr const char* kUnknownElement = "Unknown element";
};

} // namespace zyr

#endif
