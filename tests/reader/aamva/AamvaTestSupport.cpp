#include "AamvaTestSupport.h"

#include "AamvaParser.h"

#include <cstdio>

ParsedRecord parseRecord(const std::string& bytes) {
    ParsedRecord out;
    zyr::AamvaDocument document;
    out.code =
        zyr::AamvaParser::parse(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), document);
    if (out.code == ZYR_OK)
        out.record = zyr::AamvaRecordBuilder::build(document);
    out.repairs = document.repairs.lines();
    return out;
}

std::ostream& operator<<(std::ostream& out, const AAMVADate& d) {
    return out << "{day " << d.Day << ", month " << d.Month << ", year " << d.Year << "}";
}

std::ostream& operator<<(std::ostream& out, const AAMVAMeasure& m) {
    return out << "{" << m.Value << ", unit " << m.Unit << "}";
}

AAMVADate date(uint32_t year, uint32_t month, uint32_t day) {
    return {day, month, year};
}

std::string itemList(const AAMVARecord& record) {
    std::string out;
    for (int32_t i = 0; i < record.DataItemCount; ++i) {
        if (i)
            out += "|";
        out += std::string(record.DataItems[i].ID) + "=" + record.DataItems[i].Value;
    }
    return out;
}

namespace {

std::string dateText(const AAMVADate& d) {
    if (d.Day == AAMVA_NOT_PRESENT || d.Month == AAMVA_NOT_PRESENT || d.Year == AAMVA_NOT_PRESENT)
        return "-";
    char text[40];
    std::snprintf(text, sizeof text, "%u-%02u-%02u", unpacked(d.Year), unpacked(d.Month), unpacked(d.Day));
    return text;
}

std::string measureText(const AAMVAMeasure& m) {
    static const char* const units[] = {"-", "in", "cm", "lb", "kg"};
    if (m.Unit == 0)
        return "-";
    const std::string unit = m.Unit < 5 ? units[m.Unit] : "unit " + std::to_string(unpacked(m.Unit));
    return std::to_string(unpacked(m.Value)) + " " + unit;
}

std::string versionText(uint32_t version) {
    return version == AAMVA_NOT_PRESENT ? "-" : std::to_string(version);
}

} // namespace

Fields describe(const AAMVARecord& r) {
    return {{"licence", r.LicenceNumber}, {"full", r.FullName}, {"surname", r.Surname}, {"forename", r.Forename},
            {"middle", r.MiddleName}, {"suffix", r.NameSuffix}, {"given", r.GivenNames}, {"sex", r.Sex},
            {"short", std::string(1, r.ShortSex)}, {"birth", dateText(r.DateOfBirth)},
            {"issue", dateText(r.IssueDate)}, {"expiry", dateText(r.ExpiryDate)}, {"street", r.AddressStreet},
            {"city", r.AddressCity}, {"state", r.AddressState}, {"postal", r.AddressPostalCode},
            {"country", r.AddressCountry}, {"height", measureText(r.Height)}, {"weight", measureText(r.Weight)},
            {"hair", std::to_string(unpacked(r.HairColour))}, {"eye", std::to_string(unpacked(r.EyeColour))},
            {"fileType", r.FileType}, {"iin", r.IIN}, {"issuer", r.IssuerName}, {"version", versionText(r.Version)},
            {"jversion", versionText(r.JurisdictionVersion)}, {"items", itemList(r)}};
}

Fields with(Fields base, const Fields& changes) {
    for (const auto& [key, value] : changes)
        base[key] = value;
    return base;
}

Fields fieldsOf(const std::string& text) {
    Fields out;
    for (std::size_t at = 0; at <= text.size();) {
        std::size_t end = text.find('|', at);
        end = end == std::string::npos ? text.size() : end;
        const std::size_t equals = text.find('=', at);
        out[text.substr(at, equals - at)] = text.substr(equals + 1, end - equals - 1);
        at = end + 1;
    }
    return out;
}

Fields fieldsOf(const std::string& items, const std::string& text) {
    return with(fieldsOf(text), {{"items", items}});
}
