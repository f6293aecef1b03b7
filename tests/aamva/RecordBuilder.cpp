#include "RecordBuilder.h"

RecordBuilder::RecordBuilder() : record_(new AAMVARecord) { Blank(); }

RecordBuilder& RecordBuilder::Blank() {
    std::memset(record_.get(), 0, sizeof(AAMVARecord));
    const AAMVADate none = {AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT};
    AAMVARecord& r = *record_;
    r.DateOfBirth = r.IssueDate = r.ExpiryDate = none;
    r.Version = r.JurisdictionVersion = AAMVA_NOT_PRESENT;
    r.HairColour = r.EyeColour = -1;
    r.ShortSex = ' ';
    items_.reset(); // the memset left DataItems null and the count 0
    return *this;
}

RecordBuilder& RecordBuilder::Full() {
    Blank();
    AAMVARecord& r = *record_;
    Text(r.LicenceNumber, "D1234567").Text(r.FullName, "JANE ANN DOE").Text(r.Surname, "DOE");
    Text(r.Forename, "JANE").Text(r.MiddleName, "ANN").Text(r.NameSuffix, "JR").Text(r.GivenNames, "JANE ANN");
    Text(r.Sex, "Female").Text(r.AddressStreet, "123 MAIN ST").Text(r.AddressCity, "ANYTOWN");
    Text(r.AddressState, "VA").Text(r.AddressPostalCode, "221010000").Text(r.AddressCountry, "USA");
    Text(r.FileType, "ANSI ").Text(r.IIN, "636000").Text(r.IssuerName, "Virginia");
    r.ShortSex = 'F';
    r.DateOfBirth = {4, 7, 1976};
    r.IssueDate = {29, 2, 2016};
    r.ExpiryDate = {31, 2, 2026}; // does not exist
    r.Height = {64, AAMVA_UNIT_INCHES};
    r.Weight = {130, AAMVA_UNIT_POUNDS};
    r.HairColour = AAMVA_HAIR_BROWN;
    r.EyeColour = AAMVA_EYE_BLUE;
    r.Version = 8;
    r.JurisdictionVersion = 0;
    return Items({{"DAQ", "Customer ID Number", "D1234567"},
                  {"DCS", "Customer Family Name", "DOE"},
                  {"DAG", "Address - Street 1", "123 MAIN ST"}});
}

RecordBuilder& RecordBuilder::Items(const std::vector<TestItem>& items) {
    items_.reset(items.empty() ? nullptr : new AAMVADataItem[items.size()]);
    for (std::size_t i = 0; i < items.size(); ++i) {
        std::memset(&items_[i], 0, sizeof(AAMVADataItem));
        Text(items_[i].ID, items[i].id);
        Text(items_[i].Name, items[i].name);
        Text(items_[i].Value, items[i].value);
    }
    record_->DataItems = items_.get();
    record_->DataItemCount = static_cast<int32_t>(items.size());
    return *this;
}

RecordBuilder& RecordBuilder::ItemCount(int32_t count) {
    record_->DataItemCount = count;
    return *this;
}
