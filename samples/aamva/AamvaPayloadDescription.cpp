#include "AamvaPayloadDescription.h"

namespace glyphor::samples {

AamvaPayloadDescription AamvaPayloadDescription::typical(int version, bool canadian) {
    AamvaPayloadDescription card;
    card.version = version;
    card.jurisdictionVersion = version >= 2 ? 1 : 0;
    card.canadian = canadian;
    card.familyName = "HOLLOWAY";
    card.firstName = "MARGARET";
    card.middleNames = "ELLEN";
    card.birth = {1984, 3, 27};
    card.issue = {2019, 11, 5};
    card.expiry = {2027, 3, 27};
    card.sex = AamvaPayloadSex::Female;
    card.eyeColour = "GRN";
    card.hairColour = "BRO";
    if (canadian) {
        card.iin = "636012";
        card.licenceNumber = "H4021-55218-40327";
        card.height = 168;
        card.heightMetric = true;
        card.weight = 61;
        card.weightMetric = true;
        card.street = "4410 LAKESHORE BLVD W";
        card.street2 = "UNIT 12";
        card.city = "TORONTO";
        card.jurisdictionCode = "ON";
        card.postalCode = "M8W 1N5";
        card.jurisdictionSubfile = "ZO";
        card.jurisdictionElements = {{"ZOZ", "A"}, {"ZOA", "0417"}};
    } else {
        card.iin = "636000";
        card.licenceNumber = "T51148823";
        card.height = 66;
        card.weight = 134;
        card.street = "1721 WILLOW BEND RD";
        card.city = "RICHMOND";
        card.jurisdictionCode = "VA";
        card.postalCode = "232300000";
        card.jurisdictionSubfile = "ZV";
        card.jurisdictionElements = {{"ZVA", "01"}, {"ZVB", "RESTRICTED TO DAYLIGHT"}};
    }
    return card;
}

} // namespace glyphor::samples
