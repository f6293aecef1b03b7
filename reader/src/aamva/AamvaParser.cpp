#include "AamvaParser.h"

#include "AamvaBodyScanner.h"
#include "AamvaElementCatalogue.h"
#include "AamvaHeaderReader.h"
#include "AamvaIdentityReader.h"
#include "AamvaSubfileAudit.h"

#include <cstring>
#include <string>

namespace zyr {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\0';
}

std::size_t nonBlankCount(std::string_view data) {
    std::size_t count = 0;
    for (char c : data)
        count += isBlank(c) ? 0 : 1;
    return count;
}

// Some scanners wrap records in C1 control characters sent as UTF-8 (C2 80..C2 9F).
std::string withoutC1Controls(std::string_view data) {
    std::string out;
    out.reserve(data.size());
    for (std::size_t i = 0; i < data.size(); ++i) {
        const auto next = i + 1 < data.size() ? static_cast<unsigned char>(data[i + 1]) : 0u;
        if (static_cast<unsigned char>(data[i]) == 0xC2 && next >= 0x80 && next <= 0x9F) {
            ++i;
            continue;
        }
        out += data[i];
    }
    return out;
}

} // namespace

int32_t AamvaParser::parse(const uint8_t* data, std::size_t length, AamvaDocument& document) {
    document = AamvaDocument();
    if (data == nullptr || length == 0)
        return ZYR_ERR_AAMVA_EMPTY;
    std::string_view bytes(reinterpret_cast<const char*>(data), length);
    std::string cleaned;
    if (std::memchr(data, 0xC2, length) != nullptr) {
        cleaned = withoutC1Controls(bytes);
        if (cleaned.size() != length)
            document.repairs.note("%zu C1 control bytes removed", (length - cleaned.size()) / 2);
        bytes = cleaned;
    }
    if (nonBlankCount(bytes) == 0)
        return ZYR_ERR_AAMVA_EMPTY;

    const int32_t headerResult = AamvaHeaderReader::read(bytes, document.header, document.repairs);
    if (headerResult != ZYR_OK)
        return headerResult;

    document.body = AamvaBodyScanner(bytes, document.header, document.repairs).scan();
    if (document.body.elements.empty()) {
        // Nothing after the header but blanks or a scrap of an element: the data was cut.
        const std::string_view rest = bytes.substr(document.header.bodyStart);
        return nonBlankCount(rest) < 5 ? ZYR_ERR_AAMVA_TRUNCATED : ZYR_ERR_NOT_AAMVA;
    }
    const AamvaSubfileAudit audit(bytes, document.header, document.body);
    if (audit.cut())
        return ZYR_ERR_AAMVA_TRUNCATED;
    audit.noteDeviations(document.repairs);

    document.issuer = AamvaIssuerTable::find(document.header.iin);
    document.elementNames.reserve(document.body.elements.size());
    for (const AamvaElement& e : document.body.elements)
        document.elementNames.push_back(AamvaElementCatalogue::name(e.id, document.header.version));
    document.identity =
        AamvaIdentityReader(document.header, document.body, document.issuer).read(document.repairs);
    return ZYR_OK;
}

} // namespace zyr
