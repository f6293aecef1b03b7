// The fields of a parsed AAMVA record as labelled rows, in the order every view of the record uses.
#ifndef GLYPHOR_AAMVA_FIELDS_H
#define GLYPHOR_AAMVA_FIELDS_H

#include "ZyrReaderLowLevelAPI.h"

#include <string>
#include <vector>

struct AAMVARow {
    std::string name;  // label ("Surname") or, for a data item, the element's descriptive name
    std::string id;    // data items only: the three-character element identifier
    std::string value; // formatted value
    std::string extra; // header notes: the standard-version name, "Not present"
};

class AAMVAFields {
public:
    // FileType, IIN, IssuerName, Version (extra: standard name), JurisdictionVersion (extra: absence note).
    static std::vector<AAMVARow> Header(const AAMVARecord& record);
    // The seventeen identity fields, AddressCity to Surname, in their fixed order.
    static std::vector<AAMVARow> Identity(const AAMVARecord& record);
    // Height and Weight (each only when its unit is known), then EyeColour and HairColour.
    static std::vector<AAMVARow> Physical(const AAMVARecord& record);
    // One row per data item in library order; none when DataItemCount is 0 or less.
    static std::vector<AAMVARow> DataItems(const AAMVARecord& record);
};

#endif
