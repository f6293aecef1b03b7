// Issuing jurisdictions by issuer identification number (IIN): every US state and territory,
// every Canadian province and territory, and the other holders of an IIN.
#ifndef ZYR_AAMVA_ISSUER_TABLE_H
#define ZYR_AAMVA_ISSUER_TABLE_H

#include <string_view>

namespace zyr {

enum class AamvaCountry { Unknown, UnitedStates, Canada, Mexico };

struct AamvaIssuer {
    const char* name;         // e.g. "Virginia"
    const char* abbreviation; // postal abbreviation, "" where there is none
    AamvaCountry country;
};

class AamvaIssuerTable {
public:
    // The issuer of an IIN; an unknown IIN gives name "Unknown" and country Unknown.
    static AamvaIssuer find(std::string_view iin);

    // "USA", "CAN", "MEX" or "".
    static const char* countryCode(AamvaCountry country);

    static constexpr const char* kUnknownIssuer = "Unknown";
};

} // namespace zyr

#endif
