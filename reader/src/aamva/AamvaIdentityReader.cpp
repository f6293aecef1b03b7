#include "AamvaIdentityReader.h"

#include "AamvaColourCodes.h"
#include "AamvaMeasureReader.h"
#include "AamvaText.h"

namespace zyr {

AamvaIdentityReader::AamvaIdentityReader(const AamvaHeader& header, const AamvaBody& body,
                                         const AamvaIssuer& issuer)
    : header_(header), body_(body), issuer_(issuer) {}

std::string_view AamvaIdentityReader::value(std::string_view id) const {
    for (const AamvaElement& e : body_.elements)
        if (e.id == id && body_.subfiles[static_cast<std::size_t>(e.subfile)].type[0] != 'Z')
            return e.value;
    return {};
}

std::string_view AamvaIdentityReader::cleanValue(std::string_view id) const {
    const std::string_view v = AamvaText::trim(value(id));
    return AamvaText::isPlaceholder(v) ? std::string_view() : v;
}

AamvaCountry AamvaIdentityReader::country() const {
    const std::string_view dcg = cleanValue("DCG");
    if (AamvaText::equalsUpper(dcg, "USA"))
        return AamvaCountry::UnitedStates;
    if (AamvaText::equalsUpper(dcg, "CAN") || AamvaText::equalsUpper(dcg, "CDN"))
        return AamvaCountry::Canada;
    if (AamvaText::equalsUpper(dcg, "MEX"))
        return AamvaCountry::Mexico;
    return issuer_.country;
}

// Version 1 wrote CCYYMMDD; version 2 MMDDCCYY even in Canada; later versions by country.
AamvaDateReader::Order AamvaIdentityReader::dateOrder() const {
    if (header_.version <= 1)
        return AamvaDateReader::Order::YearFirst;
    if (header_.version == 2)
        return AamvaDateReader::Order::MonthFirst;
    return country() == AamvaCountry::Canada ? AamvaDateReader::Order::YearFirst
                                             : AamvaDateReader::Order::MonthFirst;
}

void AamvaIdentityReader::readSex(AamvaIdentity& identity) const {
    const std::string_view sex = cleanValue("DBC");
    if (sex.empty())
        return;
    switch (AamvaText::toUpper(sex[0])) {
    case '1':
    case 'M':
        identity.sex = "Male";
        identity.shortSex = 'M';
        break;
    case '2':
    case 'F':
        identity.sex = "Female";
        identity.shortSex = 'F';
        break;
    default:
        identity.sex = "Unknown";
        identity.shortSex = 'X';
        break;
    }
}

// Version 1 separates mailing (DAG..DAK) and residence (DAL..DAP) addresses; the mailing one
// wins, the residence one fills what it lacks.
void AamvaIdentityReader::readAddress(AamvaIdentity& identity) const {
    auto either = [this](std::string_view first, std::string_view second) {
        const std::string_view v = cleanValue(first);
        return std::string(v.empty() ? cleanValue(second) : v);
    };
    const bool mailingStreet = !cleanValue("DAG").empty();
    identity.street = std::string(mailingStreet ? cleanValue("DAG") : cleanValue("DAL"));
    const std::string_view secondLine = cleanValue(mailingStreet ? "DAH" : "DAM");
    if (!secondLine.empty()) {
        if (!identity.street.empty())
            identity.street += ", ";
        identity.street += secondLine;
    }
    identity.city = either("DAI", "DAN");
    identity.state = either("DAJ", "DAO");
    identity.postalCode = either("DAK", "DAP");
    const std::string_view dcg = cleanValue("DCG");
    identity.country = dcg.empty() ? AamvaIssuerTable::countryCode(issuer_.country) : std::string(dcg);
}

AamvaIdentity AamvaIdentityReader::read(AamvaRepairs& repairs) const {
    AamvaIdentity identity;
    identity.licenceNumber = std::string(cleanValue("DAQ"));
    AamvaNameElements names;
    names.daa = value("DAA");
    names.dab = value("DAB");
    names.dac = value("DAC");
    names.dad = value("DAD");
    names.dae = value("DAE");
    names.dcs = value("DCS");
    names.dct = value("DCT");
    names.dcu = value("DCU");
    identity.name = AamvaNameReader::read(names, &repairs);
    readSex(identity);

    const AamvaDateReader::Order order = dateOrder();
    identity.birth = AamvaDateReader::read(value("DBB"), order);
    identity.issue = AamvaDateReader::read(value("DBD"), order);
    identity.expiry = AamvaDateReader::read(value("DBA"), order);

    readAddress(identity);

    identity.height = AamvaMeasureReader::height(value("DAU"), false);
    if (identity.height.Unit == 0)
        identity.height = AamvaMeasureReader::height(value("DAV"), true);
    identity.weight = AamvaMeasureReader::weight(value("DAW"), false);
    if (identity.weight.Unit == 0)
        identity.weight = AamvaMeasureReader::weight(value("DAX"), true);

    identity.hairColour = AamvaColourCodes::hair(value("DAZ"));
    identity.eyeColour = AamvaColourCodes::eye(value("DAY"));
    return identity;
}

} // namespace zyr
