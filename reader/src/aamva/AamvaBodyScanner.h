// Splits the bytes after the header into subfiles and elements. Designator offsets are only
// hints on real cards, so subfiles are found by their own markers ("DLDAQ", "ZVZVA") and
// elements by their separators; a declared offset only helps to find a jurisdiction subfile that
// lost both its type and the terminator before it.
#ifndef ZYR_AAMVA_BODY_SCANNER_H
#define ZYR_AAMVA_BODY_SCANNER_H

#include "AamvaBody.h"
#include "AamvaHeader.h"
#include "AamvaRepairs.h"

#include <string_view>

namespace zyr {

class AamvaBodyScanner {
public:
    AamvaBodyScanner(std::string_view data, const AamvaHeader& header, AamvaRepairs& repairs);

    AamvaBody scan();

private:
    bool isSeparator(char c) const;
    bool isTerminatorAt(std::size_t at) const;
    bool elementIdAt(std::size_t at) const;
    bool subfileStartAt(std::size_t at) const;
    bool unopenedJurisdictionSubfileAt(std::size_t at) const;
    bool declaredJurisdictionElementAt(std::size_t at) const;
    int unusedDesignator(std::string_view type) const;
    bool finished(const AamvaBody& body) const;
    void openSubfile(AamvaBody& body, std::string_view type, std::size_t start, bool prefixed);
    std::size_t readElement(AamvaBody& body, std::size_t at, bool subfileJustOpened);
    void removeTypedTerminators(AamvaBody& body);

    std::string_view data_;
    const AamvaHeader& header_;
    AamvaRepairs& repairs_;
    std::vector<bool> designatorUsed_;
};

} // namespace zyr

#endif
