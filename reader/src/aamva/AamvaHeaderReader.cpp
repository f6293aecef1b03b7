#include "AamvaHeaderReader.h"

#include "AamvaText.h"

#include <algorithm>
#include <cstdio>

namespace zyr {
namespace {

bool startsWithUpper(std::string_view data, std::size_t at, std::string_view word) {
    return at <= data.size() && AamvaText::equalsUpper(data.substr(at, word.size()), word);
}

bool isBlankOrControl(unsigned char c) {
    return c <= ' ' || c == 0x7F || c == 0xEF || c == 0xBB || c == 0xBF;
}

// A control or punctuation byte can serve as a separator; letters, digits and spaces cannot
// (keyboard-wedge scanners type Ctrl-M as "M").
bool usableSeparator(char c) {
    const auto u = static_cast<unsigned char>(c);
    return u < 0x80 && u != ' ' && !AamvaText::isAlnum(c);
}

bool isSubfileType(std::string_view data, std::size_t at) {
    if (at + 2 > data.size())
        return false;
    const std::string_view type = data.substr(at, 2);
    return type == "DL" || type == "ID" || type == "EN" || (type[0] == 'Z' && AamvaText::isUpper(type[1]));
}

long numberOr(std::string_view text, long fallback) {
    long value = 0;
    return AamvaText::toNumber(text, value) ? value : fallback;
}

} // namespace

std::size_t AamvaHeaderReader::markerLength(std::string_view data, std::size_t at) {
    if (startsWithUpper(data, at, "ANSI ") || startsWithUpper(data, at, "AAMVA") ||
        startsWithUpper(data, at, "AMVA ") || startsWithUpper(data, at, "AMVAA"))
        return 5;
    // "ANSI" without its space, straight into the IIN.
    if (startsWithUpper(data, at, "ANSI") && at + 4 < data.size() && AamvaText::isDigit(data[at + 4]))
        return 4;
    return 0;
}

bool AamvaHeaderReader::takePrefix(std::string_view data, std::size_t marker, AamvaHeader& header) {
    for (std::size_t a = marker > 5 ? marker - 5 : 0; a < marker; ++a) {
        if (data[a] != '@')
            continue;
        header.start = a;
        header.complianceIndicator = '@';
        if (a + 1 < marker && usableSeparator(data[a + 1]))
            header.elementSeparator = data[a + 1];
        if (a + 2 < marker)
            header.recordSeparator = data[a + 2];
        if (a + 3 < marker && usableSeparator(data[a + 3]))
            header.segmentTerminator = data[a + 3];
        header.terminatorTyped = a + 1 < marker && AamvaText::toUpper(data[marker - 1]) == 'M';
        return true;
    }
    // Without a compliance indicator only blanks and control bytes may come first.
    for (std::size_t i = 0; i < marker; ++i)
        if (!isBlankOrControl(static_cast<unsigned char>(data[i])))
            return false;
    header.start = marker;
    return true;
}

void AamvaHeaderReader::notePrefix(std::string_view data, std::size_t marker, const AamvaHeader& header,
                                   AamvaRepairs& repairs) {
    if (header.start == 3 && data.substr(0, 3) == "\xEF\xBB\xBF")
        repairs.note("byte order mark before the header skipped");
    else if (header.start > 0)
        repairs.note("%zu bytes before the header skipped", header.start);
    if (header.complianceIndicator == 0) {
        repairs.note("header without its compliance indicator and control bytes");
        return;
    }
    const std::string_view controls = data.substr(header.start + 1, marker - header.start - 1);
    if (controls == "\n\x1e\r")
        return;
    std::string shown = controls.empty() ? "none" : "";
    for (std::size_t i = 0; i < controls.size() && i < 4; ++i) {
        char hex[4];
        std::snprintf(hex, sizeof hex, "%02X", static_cast<unsigned char>(controls[i]));
        shown += (i ? " " : "") + std::string(hex);
    }
    repairs.note("header control bytes %s in place of 0A 1E 0D%s", shown.c_str(),
                 header.terminatorTyped ? ": CR typed as M" : "");
}

bool AamvaHeaderReader::designatorAt(std::string_view data, std::size_t at, const AamvaHeader& header) {
    if (at + 10 > data.size() || !isSubfileType(data, at))
        return false;
    for (std::size_t i = at + 2; i < at + 10; ++i) {
        const char c = data[i];
        if (c == '\n' || c == '\r' || c == header.elementSeparator || c == header.segmentTerminator)
            return false;
    }
    // "DLDAQ..." is the first subfile itself, not a designator.
    const bool elementFollows = AamvaText::isUpper(data[at + 2]) && AamvaText::isUpper(data[at + 3]) &&
                                AamvaText::isUpper(data[at + 4]);
    return !elementFollows;
}

bool AamvaHeaderReader::looksLikeCutHeader(std::string_view data) {
    std::size_t i = 0;
    while (i < data.size() && i < kLeadingBytes && data[i] != '@' &&
           isBlankOrControl(static_cast<unsigned char>(data[i])))
        ++i;
    if (i >= data.size() || data[i] != '@')
        return false;
    ++i;
    for (int controls = 0; controls < 4 && i < data.size() && !AamvaText::isAlnum(data[i]); ++controls)
        ++i;
    const std::string_view rest = data.substr(i);
    return rest.size() < 5 &&
           (AamvaText::equalsUpper(rest, std::string_view("ANSI ").substr(0, rest.size())) ||
            AamvaText::equalsUpper(rest, std::string_view("AAMVA").substr(0, rest.size())));
}

int32_t AamvaHeaderReader::readFields(std::string_view data, std::size_t e, AamvaHeader& header,
                                      AamvaRepairs& repairs) {
    const std::size_t size = data.size();
    for (std::size_t i = e; i < std::min(size, e + 6); ++i)
        if (!AamvaText::isDigit(data[i]))
            return ZYR_ERR_NOT_AAMVA;
    if (size < e + 8)
        return ZYR_ERR_AAMVA_TRUNCATED;
    header.iin = std::string(data.substr(e, 6));
    header.version = static_cast<uint32_t>(numberOr(data.substr(e + 6, 2), AAMVA_NOT_PRESENT));

    // Version 2 and later put the jurisdiction version and count before the designators, version
    // 1 only the count; some pre-standard cards have no count. Trust where a designator starts.
    const bool newLayout = header.version >= 2;
    const std::size_t candidates[] = {newLayout ? e + 12 : e + 10, newLayout ? e + 10 : e + 12, e + 8};
    std::size_t designators = 0;
    for (std::size_t candidate : candidates) {
        if (designatorAt(data, candidate, header)) {
            designators = candidate;
            break;
        }
    }
    if (designators == 0) {
        if (size < e + 22)
            return ZYR_ERR_AAMVA_TRUNCATED;
        designators = newLayout ? e + 12 : e + 10;
    }
    if (designators == e + 12) {
        header.jurisdictionVersion =
            static_cast<uint32_t>(numberOr(data.substr(e + 8, 2), AAMVA_NOT_PRESENT));
        header.entryCount = static_cast<int32_t>(numberOr(data.substr(e + 10, 2), -1));
        if (!newLayout)
            repairs.note("version %u header with a jurisdiction version", header.version);
    } else if (designators == e + 10) {
        header.shortLayout = true;
        header.entryCount = static_cast<int32_t>(numberOr(data.substr(e + 8, 2), -1));
        if (newLayout)
            repairs.note("version %u header without a jurisdiction version", header.version);
    } else {
        repairs.note("header without an entry count");
    }

    // The count is not trusted either way: read every designator there is.
    std::size_t p = designators;
    while (header.designators.size() < 99 && designatorAt(data, p, header)) {
        AamvaDesignator d;
        d.type = std::string(data.substr(p, 2));
        d.offset = static_cast<int32_t>(numberOr(data.substr(p + 2, 4), -1));
        d.length = static_cast<int32_t>(numberOr(data.substr(p + 6, 4), -1));
        header.designators.push_back(std::move(d));
        p += 10;
    }
    const bool countPromisesMore = header.entryCount > static_cast<int32_t>(header.designators.size());
    if (countPromisesMore && size - p < 10)
        return ZYR_ERR_AAMVA_TRUNCATED;
    header.bodyStart = p;
    if (header.entryCount >= 0 && header.entryCount != static_cast<int32_t>(header.designators.size()))
        repairs.note("header counts %d subfiles and lists %zu", header.entryCount, header.designators.size());
    return ZYR_OK;
}

int32_t AamvaHeaderReader::read(std::string_view data, AamvaHeader& header, AamvaRepairs& repairs) {
    header = AamvaHeader();
    const std::size_t last = std::min(data.size(), kLeadingBytes + 5);
    for (std::size_t m = 0; m < last; ++m) {
        const std::size_t length = markerLength(data, m);
        if (length == 0 || !takePrefix(data, m, header))
            continue;
        header.fileType = std::string(data.substr(m, length));
        notePrefix(data, m, header, repairs);
        // A doubled space after the file type makes the header a byte long.
        std::size_t fields = m + length;
        while (fields < data.size() && fields < m + length + 2 && data[fields] == ' ')
            ++fields;
        if (fields > m + length)
            repairs.note("%zu extra spaces after the file type", fields - m - length);
        return readFields(data, fields, header, repairs);
    }
    return looksLikeCutHeader(data) ? ZYR_ERR_AAMVA_TRUNCATED : ZYR_ERR_NOT_AAMVA;
}

} // namespace zyr
