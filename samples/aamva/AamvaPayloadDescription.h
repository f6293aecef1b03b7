// What goes into a generated AAMVA card data stream: the card holder and the header values. The
// writer turns it into the elements and layout of the requested version.
#ifndef GLYPHOR_SAMPLES_AAMVA_PAYLOAD_DESCRIPTION_H
#define GLYPHOR_SAMPLES_AAMVA_PAYLOAD_DESCRIPTION_H

#include <string>
#include <utility>
#include <vector>

namespace glyphor::samples {

struct AamvaPayloadDate {
    int year = 0; // 0 = the date is left out
    int month = 0;
    int day = 0;
};

enum class AamvaPayloadSex { Male, Female, Unspecified };

struct AamvaPayloadDescription {
    int version = 9;                // AAMVA version 0..11; picks the header layout, elements and date order
    std::string iin = "636000";     // issuer identification number, six digits
    int jurisdictionVersion = 0;    // 0..99; the header carries it from version 2 on
    bool canadian = false;          // Canadian issuer: country CDN/CAN and, from version 3, CCYYMMDD dates
    std::string subfileType = "DL"; // DL, ID or EN

    std::string licenceNumber;
    std::string familyName;
    std::string firstName;
    std::string middleNames; // several separated by commas
    std::string suffix;      // empty = none
    AamvaPayloadDate birth;
    AamvaPayloadDate issue;
    AamvaPayloadDate expiry;
    AamvaPayloadSex sex = AamvaPayloadSex::Unspecified;
    int height = 0; // inches, or centimetres when heightMetric; 0 = left out
    bool heightMetric = false;
    int weight = 0; // pounds, or kilograms when weightMetric; 0 = left out
    bool weightMetric = false;
    std::string eyeColour; // written as given (D20 code); empty = left out where optional
    std::string hairColour;
    std::string street;
    std::string street2; // empty = left out
    std::string city;
    std::string jurisdictionCode; // two letters, e.g. VA
    std::string postalCode;

    std::string jurisdictionSubfile = "ZV"; // type of the jurisdiction subfile
    // Elements of the jurisdiction subfile (ID, value); none = no jurisdiction subfile.
    std::vector<std::pair<std::string, std::string>> jurisdictionElements;

    // A complete card of the given version from a US (Virginia) or Canadian (Ontario) issuer.
    static AamvaPayloadDescription typical(int version, bool canadian);
};

} // namespace glyphor::samples

#endif
