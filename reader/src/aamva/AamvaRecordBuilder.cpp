#include "AamvaRecordBuilder.h"

#include <cstring>

namespace zyr {

void AamvaRecordDeleter::operator()(AAMVARecord* record) const {
    if (record == nullptr)
        return;
    delete[] record->DataItems;
    delete record;
}

void AamvaRecordBuilder::copyText(char* field, std::size_t size, std::string_view text) {
    const std::size_t count = text.size() < size ? text.size() : size - 1;
    std::memcpy(field, text.data(), count);
    field[count] = '\0';
}

AamvaRecordPtr AamvaRecordBuilder::build(const AamvaDocument& document) {
    AamvaRecordPtr record(new AAMVARecord());
    AAMVARecord& r = *record;
    const AamvaIdentity& id = document.identity;
    copyText(r.LicenceNumber, id.licenceNumber);
    copyText(r.FullName, id.name.full);
    copyText(r.Surname, id.name.surname);
    copyText(r.Forename, id.name.forename);
    copyText(r.MiddleName, id.name.middle);
    copyText(r.NameSuffix, id.name.suffix);
    copyText(r.GivenNames, id.name.given);
    copyText(r.Sex, id.sex);
    r.ShortSex = id.shortSex;
    r.DateOfBirth = id.birth;
    r.IssueDate = id.issue;
    r.ExpiryDate = id.expiry;
    copyText(r.AddressStreet, id.street);
    copyText(r.AddressCity, id.city);
    copyText(r.AddressState, id.state);
    copyText(r.AddressPostalCode, id.postalCode);
    copyText(r.AddressCountry, id.country);
    r.Height = id.height;
    r.Weight = id.weight;
    r.HairColour = id.hairColour;
    r.EyeColour = id.eyeColour;
    copyText(r.FileType, document.header.fileType);
    copyText(r.IIN, document.header.iin);
    copyText(r.IssuerName, document.issuer.name);
    r.Version = document.header.version;
    r.JurisdictionVersion = document.header.jurisdictionVersion;

    const std::vector<AamvaElement>& elements = document.body.elements;
    if (!elements.empty()) {
        r.DataItems = new AAMVADataItem[elements.size()]();
        r.DataItemCount = static_cast<int32_t>(elements.size());
        for (std::size_t i = 0; i < elements.size(); ++i) {
            copyText(r.DataItems[i].ID, elements[i].id);
            copyText(r.DataItems[i].Name, i < document.elementNames.size() ? document.elementNames[i] : "");
            copyText(r.DataItems[i].Value, elements[i].value);
        }
    }
    return record;
}

} // namespace zyr
