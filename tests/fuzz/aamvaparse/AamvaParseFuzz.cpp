// Any bytes: the parser answers one of its four codes, stays inside the input, and a record
// built from a success has every text field terminated and one data item per element.
#include "AamvaParser.h"
#include "AamvaRecordBuilder.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

template <std::size_t... N> void requireTerminated(const char (&... fields)[N]) {
    if (((std::memchr(fields, 0, N) == nullptr) || ...))
        __builtin_trap();
}

void requireSound(const zyr::AamvaDocument& document) {
    const zyr::AamvaRecordPtr record = zyr::AamvaRecordBuilder::build(document);
    const AAMVARecord& r = *record;
    requireTerminated(r.LicenceNumber, r.FullName, r.Surname, r.Forename, r.MiddleName, r.NameSuffix,
                      r.GivenNames, r.Sex, r.AddressStreet, r.AddressCity, r.AddressState,
                      r.AddressPostalCode, r.AddressCountry, r.FileType, r.IIN, r.IssuerName);
    if (r.DataItemCount <= 0 || static_cast<std::size_t>(r.DataItemCount) != document.body.elements.size())
        __builtin_trap();
    for (int32_t i = 0; i < r.DataItemCount; ++i) {
        requireTerminated(r.DataItems[i].ID, r.DataItems[i].Name, r.DataItems[i].Value);
        if (std::strlen(r.DataItems[i].ID) != 3 || r.DataItems[i].Name[0] == '\0')
            __builtin_trap();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    zyr::AamvaDocument document;
    const int32_t code = zyr::AamvaParser::parse(data, size, document);
    if (code == ZYR_OK)
        requireSound(document);
    else if (code != ZYR_ERR_AAMVA_EMPTY && code != ZYR_ERR_NOT_AAMVA && code != ZYR_ERR_AAMVA_TRUNCATED)
        __builtin_trap();
    return 0;
}
