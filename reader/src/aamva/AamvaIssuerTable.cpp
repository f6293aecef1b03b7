#include "AamvaIssuerTable.h"

#include <algorithm>
#include <iterator>

namespace zyr {
namespace {

struct Entry {
    char iin[7];
    AamvaIssuer issuer;
};

constexpr AamvaCountry US = AamvaCountry::UnitedStates;
constexpr AamvaCountry CA = AamvaCountry::Canada;
constexpr AamvaCountry MX = AamvaCountry::Mexico;

// Sorted by IIN.
const Entry kIssuers[] = {
    {"604426", {"Prince Edward Island", "PE", CA}},
    {"604427", {"American Samoa", "AS", US}},
    {"604428", {"Quebec", "QC", CA}},
    {"604429", {"Yukon", "YT", CA}},
    {"604430", {"Northern Mariana Islands", "MP", US}},
    {"604431", {"Puerto Rico", "PR", US}},
    {"604432", {"Alberta", "AB", CA}},
    {"604433", {"Nunavut", "NU", CA}},
    {"604434", {"Northwest Territories", "NT", CA}},
    {"636000", {"Virginia", "VA", US}},
    {"636001", {"New York", "NY", US}},
    {"636002", {"Massachusetts", "MA", US}},
    {"636003", {"Maryland", "MD", US}},
    {"636004", {"North Carolina", "NC", US}},
    {"636005", {"South Carolina", "SC", US}},
    {"636006", {"Connecticut", "CT", US}},
    {"636007", {"Louisiana", "LA", US}},
    {"636008", {"Montana", "MT", US}},
    {"636009", {"New Mexico", "NM", US}},
    {"636010", {"Florida", "FL", US}},
    {"636011", {"Delaware", "DE", US}},
    {"636012", {"Ontario", "ON", CA}},
    {"636013", {"Nova Scotia", "NS", CA}},
    {"636014", {"California", "CA", US}},
    {"636015", {"Texas", "TX", US}},
    {"636016", {"Newfoundland and Labrador", "NL", CA}},
    {"636017", {"New Brunswick", "NB", CA}},
    {"636018", {"Iowa", "IA", US}},
    {"636019", {"Guam", "GU", US}},
    {"636020", {"Colorado", "CO", US}},
    {"636021", {"Arkansas", "AR", US}},
    {"636022", {"Kansas", "KS", US}},
    {"636023", {"Ohio", "OH", US}},
    {"636024", {"Vermont", "VT", US}},
    {"636025", {"Pennsylvania", "PA", US}},
    {"636026", {"Arizona", "AZ", US}},
    {"636027", {"U.S. Department of State", "", US}},
    {"636028", {"British Columbia", "BC", CA}},
    {"636029", {"Oregon", "OR", US}},
    {"636030", {"Missouri", "MO", US}},
    {"636031", {"Wisconsin", "WI", US}},
    {"636032", {"Michigan", "MI", US}},
    {"636033", {"Alabama", "AL", US}},
    {"636034", {"North Dakota", "ND", US}},
    {"636035", {"Illinois", "IL", US}},
    {"636036", {"New Jersey", "NJ", US}},
    {"636037", {"Indiana", "IN", US}},
    {"636038", {"Minnesota", "MN", US}},
    {"636039", {"New Hampshire", "NH", US}},
    {"636040", {"Utah", "UT", US}},
    {"636041", {"Maine", "ME", US}},
    {"636042", {"South Dakota", "SD", US}},
    {"636043", {"District of Columbia", "DC", US}},
    {"636044", {"Saskatchewan", "SK", CA}},
    {"636045", {"Washington", "WA", US}},
    {"636046", {"Kentucky", "KY", US}},
    {"636047", {"Hawaii", "HI", US}},
    {"636048", {"Manitoba", "MB", CA}},
    {"636049", {"Nevada", "NV", US}},
    {"636050", {"Idaho", "ID", US}},
    {"636051", {"Mississippi", "MS", US}},
    {"636052", {"Rhode Island", "RI", US}},
    {"636053", {"Tennessee", "TN", US}},
    {"636054", {"Nebraska", "NE", US}},
    {"636055", {"Georgia", "GA", US}},
    {"636056", {"Coahuila", "CU", MX}},
    {"636057", {"Hidalgo", "HL", MX}},
    {"636058", {"Oklahoma", "OK", US}},
    {"636059", {"Alaska", "AK", US}},
    {"636060", {"Wyoming", "WY", US}},
    {"636061", {"West Virginia", "WV", US}},
    {"636062", {"U.S. Virgin Islands", "VI", US}},
    // Older Alberta cards carry this number, which is outside the ISO range.
    {"990876", {"Alberta", "AB", CA}},
};

} // namespace

AamvaIssuer AamvaIssuerTable::find(std::string_view iin) {
    auto less = [](const Entry& e, std::string_view key) { return std::string_view(e.iin, 6) < key; };
    const Entry* e = std::lower_bound(std::begin(kIssuers), std::end(kIssuers), iin, less);
    if (e != std::end(kIssuers) && std::string_view(e->iin, 6) == iin)
        return e->issuer;
    return {kUnknownIssuer, "", AamvaCountry::Unknown};
}

const char* AamvaIssuerTable::countryCode(AamvaCountry country) {
    switch (country) {
    case AamvaCountry::UnitedStates:
        return "USA";
    case AamvaCountry::Canada:
        return "CAN";
    case AamvaCountry::Mexico:
        return "MEX";
    case AamvaCountry::Unknown:
        break;
    }
    return "";
}

} // namespace zyr
