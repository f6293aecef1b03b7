// Fills the card holder's identity from the elements of the card subfiles (DL, ID, EN), using
// the version and the issuing country to decide formats.
#ifndef ZYR_AAMVA_IDENTITY_READER_H
#define ZYR_AAMVA_IDENTITY_READER_H

#include "AamvaDateReader.h"
#include "AamvaDocument.h"
#include "AamvaRepairs.h"

#include <string_view>

namespace zyr {

class AamvaIdentityReader {
public:
    AamvaIdentityReader(const AamvaHeader& header, const AamvaBody& body, const AamvaIssuer& issuer);

    // Names taken apart against the standard are noted in repairs.
    AamvaIdentity read(AamvaRepairs& repairs) const;

    // Order the dates of this card are expected in.
    AamvaDateReader::Order dateOrder() const;

private:
    std::string_view value(std::string_view id) const; // first occurrence outside Z subfiles
    std::string_view cleanValue(std::string_view id) const;
    AamvaCountry country() const;
    void readSex(AamvaIdentity& identity) const;
    void readAddress(AamvaIdentity& identity) const;

    const AamvaHeader& header_;
    const AamvaBody& body_;
    const AamvaIssuer& issuer_;
};

} // namespace zyr

#endif
