#include "AamvaParser.h"

#include "AamvaBodyScanner.h"
#include "AamvaElementCatalogue.h"
#include "AamvaHeaderReader.h"
#include "AamvaIdentityReader.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

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

// The data stopped inside its last subfile: it has no terminator and its designator says it
// runs on past the end. One byte of slack allows for a scanner that drops the final CR.
bool AamvaParser::endsEarly(const AamvaDocument& document, std::size_t originalLength) {
    const AamvaSubfile& last = document.body.subfiles.back();
    if (last.terminated || last.designator < 0)
        return false;
    const AamvaDesignator& d = document.header.designators[static_cast<std::size_t>(last.designator)];
    if (d.length < 0)
        return false;
    const std::size_t start = last.prefixed || last.start < 2 ? last.start : last.start - 2;
    return start + static_cast<std::size_t>(d.length) > originalLength + 1;
}

// The data stops a few bytes into a subfile the header announced ("Z", "ZV", "ZVZV").
bool AamvaParser::endsInAnnouncedSubfile(const AamvaDocument& document, std::string_view data) {
    std::string_view rest = data.substr(std::min(document.body.end, data.size()));
    while (!rest.empty() && (isBlank(rest.front()) || rest.front() == document.header.elementSeparator ||
                             rest.front() == document.header.segmentTerminator))
        rest.remove_prefix(1);
    if (rest.empty() || rest.size() >= 5)
        return false;
    std::vector<bool> seen(document.header.designators.size(), false);
    for (const AamvaSubfile& s : document.body.subfiles)
        if (s.designator >= 0)
            seen[static_cast<std::size_t>(s.designator)] = true;
    for (std::size_t i = 0; i < seen.size(); ++i) {
        const std::string& type = document.header.designators[i].type;
        if (!seen[i] && (type + type).compare(0, rest.size(), rest) == 0)
            return true;
    }
    return false;
}

int32_t AamvaParser::parse(const uint8_t* data, std::size_t length, AamvaDocument& document) {
    document = AamvaDocument();
    if (data == nullptr || length == 0)
        return ZYR_ERR_AAMVA_EMPTY;
    std::string_view bytes(reinterpret_cast<const char*>(data), length);
    std::string cleaned;
    if (std::memchr(data, 0xC2, length) != nullptr) {
        cleaned = withoutC1Controls(bytes);
        bytes = cleaned;
    }
    if (nonBlankCount(bytes) == 0)
        return ZYR_ERR_AAMVA_EMPTY;

    const int32_t headerResult = AamvaHeaderReader::read(bytes, document.header);
    if (headerResult != ZYR_OK)
        return headerResult;

    document.body = AamvaBodyScanner(bytes, document.header).scan();
    if (document.body.elements.empty()) {
        // Nothing after the header but blanks or a scrap of an element: the data was cut.
        const std::string_view rest = bytes.substr(document.header.bodyStart);
        return nonBlankCount(rest) < 5 ? ZYR_ERR_AAMVA_TRUNCATED : ZYR_ERR_NOT_AAMVA;
    }
    if (endsEarly(document, length) || endsInAnnouncedSubfile(document, bytes))
        return ZYR_ERR_AAMVA_TRUNCATED;

    document.issuer = AamvaIssuerTable::find(document.header.iin);
    document.elementNames.reserve(document.body.elements.size());
    for (const AamvaElement& e : document.body.elements)
        document.elementNames.push_back(AamvaElementCatalogue::name(e.id, document.header.version));
    document.identity = AamvaIdentityReader(document.header, document.body, document.issuer).read();
    return ZYR_OK;
}

} // namespace zyr
