#include "AamvaElementCatalogue.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace zyr {
namespace {

struct Entry {
    char id[4];
    uint32_t fromVersion; // first version the name applies to
    const char* name;
};

// Sorted by ID, then version. An ID used on a card older than its first entry takes that entry.
const Entry kEntries[] = {
    {"DAA", 0, "Full name"},
    {"DAB", 0, "Last name"},
    {"DAC", 0, "First name"},
    {"DAD", 0, "Middle name or initial"},
    {"DAD", 4, "Middle names"},
    {"DAE", 0, "Name suffix"},
    {"DAF", 0, "Name prefix"},
    {"DAG", 0, "Mailing street address 1"},
    {"DAG", 2, "Street address 1"},
    {"DAH", 0, "Mailing street address 2"},
    {"DAH", 2, "Street address 2"},
    {"DAI", 0, "Mailing city"},
    {"DAI", 2, "City"},
    {"DAJ", 0, "Mailing jurisdiction code"},
    {"DAJ", 2, "Jurisdiction code"},
    {"DAK", 0, "Mailing postal code"},
    {"DAK", 2, "Postal code"},
    {"DAL", 0, "Residence street address 1"},
    {"DAM", 0, "Residence street address 2"},
    {"DAN", 0, "Residence city"},
    {"DAO", 0, "Residence jurisdiction code"},
    {"DAP", 0, "Residence postal code"},
    {"DAQ", 0, "Licence or ID number"},
    {"DAQ", 2, "Customer ID number"},
    {"DAR", 0, "Licence classification code"},
    {"DAS", 0, "Licence restriction code"},
    {"DAT", 0, "Licence endorsements code"},
    {"DAU", 0, "Height (feet and inches)"},
    {"DAU", 2, "Height"},
    {"DAV", 0, "Height (centimetres)"},
    {"DAW", 0, "Weight (pounds)"},
    {"DAX", 0, "Weight (kilograms)"},
    {"DAY", 0, "Eye colour"},
    {"DAZ", 0, "Hair colour"},
    {"DBA", 0, "Licence expiry date"},
    {"DBA", 2, "Document expiry date"},
    {"DBB", 0, "Date of birth"},
    {"DBC", 0, "Sex"},
    {"DBD", 0, "Licence or ID issue date"},
    {"DBD", 2, "Document issue date"},
    {"DBE", 0, "Issue timestamp"},
    {"DBF", 0, "Number of duplicates"},
    {"DBG", 0, "Medical indicator or codes"},
    {"DBG", 3, "Alias given name"},
    {"DBH", 0, "Organ donor"},
    {"DBI", 0, "Non-resident indicator"},
    {"DBJ", 0, "Unique customer identifier"},
    {"DBK", 0, "Social security number"},
    {"DBL", 0, "Alias date of birth"},
    {"DBM", 0, "Alias social security number"},
    {"DBN", 0, "Alias full name"},
    {"DBN", 3, "Alias family name"},
    {"DBO", 0, "Alias last name"},
    {"DBP", 0, "Alias first name"},
    {"DBQ", 0, "Alias middle name"},
    {"DBR", 0, "Alias suffix"},
    {"DBS", 0, "Alias prefix"},
    {"DBS", 3, "Alias suffix"},
    {"DCA", 2, "Jurisdiction vehicle class"},
    {"DCB", 2, "Jurisdiction restriction codes"},
    {"DCD", 2, "Jurisdiction endorsement codes"},
    {"DCE", 2, "Weight range"},
    {"DCF", 2, "Document discriminator"},
    {"DCG", 2, "Country"},
    {"DCH", 2, "Federal commercial vehicle codes"},
    {"DCI", 2, "Place of birth"},
    {"DCJ", 2, "Audit information"},
    {"DCK", 2, "Inventory control number"},
    {"DCL", 2, "Race or ethnicity"},
    {"DCM", 2, "Standard vehicle classification"},
    {"DCN", 2, "Standard endorsement code"},
    {"DCO", 2, "Standard restriction code"},
    {"DCP", 2, "Vehicle class description"},
    {"DCQ", 2, "Endorsement description"},
    {"DCR", 2, "Restriction description"},
    {"DCS", 2, "Family name"},
    {"DCT", 2, "Given names"},
    {"DCU", 2, "Name suffix"},
    {"DDA", 4, "Compliance type"},
    {"DDB", 4, "Card revision date"},
    {"DDC", 4, "HAZMAT endorsement expiry date"},
    {"DDD", 4, "Limited duration document indicator"},
    {"DDE", 4, "Family name truncation"},
    {"DDF", 4, "First name truncation"},
    {"DDG", 4, "Middle name truncation"},
    {"DDH", 4, "Under 18 until"},
    {"DDI", 4, "Under 19 until"},
    {"DDJ", 4, "Under 21 until"},
    {"DDK", 6, "Organ donor indicator"},
    {"DDL", 7, "Veteran indicator"},
    {"PAA", 0, "Permit classification code"},
    {"PAB", 0, "Permit expiry date"},
    {"PAC", 0, "Permit identifier"},
    {"PAD", 0, "Permit issue date"},
    {"PAE", 0, "Permit restriction code"},
    {"PAF", 0, "Permit endorsement code"},
};

} // namespace

const char* AamvaElementCatalogue::name(std::string_view id, uint32_t version) {
    if (id.size() != 3)
        return kUnknownElement;
    auto less = [](const Entry& e, std::string_view key) { return std::string_view(e.id, 3) < key; };
    const Entry* first = std::lower_bound(std::begin(kEntries), std::end(kEntries), id, less);
    if (first == std::end(kEntries) || std::string_view(first->id, 3) != id)
        return id[0] == 'Z' ? kJurisdictionElement : kUnknownElement;
    const Entry* chosen = first;
    for (const Entry* e = first; e != std::end(kEntries) && std::string_view(e->id, 3) == id; ++e)
        if (e->fromVersion <= version)
            chosen = e;
    return chosen->name;
}

} // namespace zyr
