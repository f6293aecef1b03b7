#include "AAMVAFields.h"

#include "AAMVAFormat.h"

namespace {

AAMVARow Row(const char* name, std::string value, std::string extra = std::string()) {
    return AAMVARow{name, std::string(), std::move(value), std::move(extra)};
}

} // namespace

std::vector<AAMVARow> AAMVAFields::Header(const AAMVARecord& r) {
    return {
        Row("FileType", AAMVA_FIELD(r.FileType)),
        Row("IIN", AAMVA_FIELD(r.IIN)),
        Row("IssuerName", AAMVA_FIELD(r.IssuerName)),
        Row("Version", AAMVAFormat::Number(r.Version),
            AAMVAFormat::VersionText(r, AAMVAFormat::StandardVersion)),
        Row("JurisdictionVersion", AAMVAFormat::Number(r.JurisdictionVersion),
            AAMVAFormat::VersionText(r, AAMVAFormat::JurisdictionVersion)),
    };
}

std::vector<AAMVARow> AAMVAFields::Identity(const AAMVARecord& r) {
    return {
        Row("AddressCity", AAMVA_FIELD(r.AddressCity)),
        Row("AddressPostalCode", AAMVA_FIELD(r.AddressPostalCode)),
        Row("AddressState", AAMVA_FIELD(r.AddressState)),
        Row("AddressStreet", AAMVA_FIELD(r.AddressStreet)),
        Row("AddressCountry", AAMVA_FIELD(r.AddressCountry)),
        Row("DateOfBirth", AAMVAFormat::DateText(r.DateOfBirth)),
        Row("ExpiryDate", AAMVAFormat::DateText(r.ExpiryDate)),
        Row("Forename", AAMVA_FIELD(r.Forename)),
        Row("FullName", AAMVA_FIELD(r.FullName)),
        Row("GivenNames", AAMVA_FIELD(r.GivenNames)),
        Row("IssueDate", AAMVAFormat::DateText(r.IssueDate)),
        Row("LicenceNumber", AAMVA_FIELD(r.LicenceNumber)),
        Row("MiddleName", AAMVA_FIELD(r.MiddleName)),
        Row("NameSuffix", AAMVA_FIELD(r.NameSuffix)),
        Row("Sex", AAMVA_FIELD(r.Sex)),
        Row("ShortSex", AAMVAFormat::ShortSexText(r.ShortSex)),
        Row("Surname", AAMVA_FIELD(r.Surname)),
    };
}

std::vector<AAMVARow> AAMVAFields::Physical(const AAMVARecord& r) {
    std::vector<AAMVARow> rows;
    if (auto height = AAMVAFormat::MeasureText(r.Height))
        rows.push_back(Row("Height", *height));
    if (auto weight = AAMVAFormat::MeasureText(r.Weight))
        rows.push_back(Row("Weight", *weight));
    rows.push_back(Row("EyeColour", AAMVAFormat::Number(r.EyeColour)));
    rows.push_back(Row("HairColour", AAMVAFormat::Number(r.HairColour)));
    return rows;
}

std::vector<AAMVARow> AAMVAFields::DataItems(const AAMVARecord& r) {
    std::vector<AAMVARow> rows;
    const int32_t count = r.DataItemCount;
    const AAMVADataItem* items = r.DataItems;
    if (count <= 0 || items == nullptr)
        return rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int32_t i = 0; i < count; ++i) {
        const AAMVADataItem& item = items[i];
        rows.push_back(AAMVARow{AAMVA_FIELD(item.Name), AAMVA_FIELD(item.ID), AAMVA_FIELD(item.Value), ""});
    }
    return rows;
}
