// Everything the parser learnt from one card data stream; AamvaRecordBuilder turns it into the
// fixed-size AAMVARecord handed to clients.
#ifndef ZYR_AAMVA_DOCUMENT_H
#define ZYR_AAMVA_DOCUMENT_H

#include "AamvaBody.h"
#include "AamvaHeader.h"
#include "AamvaIssuerTable.h"
#include "AamvaNameReader.h"
#include "AamvaRepairs.h"
#include "ZyrReaderLowLevelAPI.h"

#include <string>
#include <vector>

namespace zyr {

struct AamvaIdentity {
    std::string licenceNumber;
    AamvaName name;
    std::string sex;     // "Male", "Female", "Unknown", or empty when the card has none
    char shortSex = ' '; // 'M', 'F', 'X' or ' '
    AAMVADate birth{AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT};
    AAMVADate issue{AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT};
    AAMVADate expiry{AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT};
    std::string street; // first line, then the second after ", "
    std::string city;
    std::string state;
    std::string postalCode; // as written, padding removed
    std::string country;    // DCG as written, else the issuer's country
    AAMVAMeasure height{0, 0};
    AAMVAMeasure weight{0, 0};
    int32_t hairColour = -1;
    int32_t eyeColour = -1;
};

struct AamvaDocument {
    AamvaHeader header;
    AamvaBody body;
    std::vector<const char*> elementNames; // descriptive name of each element of body
    AamvaIssuer issuer{AamvaIssuerTable::kUnknownIssuer, "", AamvaCountry::Unknown};
    AamvaIdentity identity;
    AamvaRepairs repairs; // what was set right in off-standard data
};

} // namespace zyr

#endif
