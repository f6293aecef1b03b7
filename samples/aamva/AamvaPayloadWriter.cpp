#include "AamvaPayloadWriter.h"

#include <cstdio>

namespace glyphor::samples {
namespace {

std::string zeroPadded(long value, int width) {
    char text[32];
    std::snprintf(text, sizeof text, "%0*ld", width, value);
    return text;
}

std::string padRight(std::string text, std::size_t width) {
    if (text.size() < width)
        text.append(width - text.size(), ' ');
    return text;
}

// Dates are CCYYMMDD up to version 1; version 2 is MMDDCCYY everywhere; from version 3 Canada
// keeps CCYYMMDD and the US writes MMDDCCYY.
std::string date(const AamvaPayloadDate& d, const AamvaPayloadDescription& card) {
    const std::string year = zeroPadded(d.year, 4);
    const std::string month = zeroPadded(d.month, 2);
    const std::string day = zeroPadded(d.day, 2);
    const bool yearFirst = card.version <= 1 || (card.version >= 3 && card.canadian);
    return yearFirst ? year + month + day : month + day + year;
}

char sexCode(const AamvaPayloadDescription& card) {
    const bool letters = card.version <= 1;
    switch (card.sex) {
    case AamvaPayloadSex::Male:
        return letters ? 'M' : '1';
    case AamvaPayloadSex::Female:
        return letters ? 'F' : '2';
    case AamvaPayloadSex::Unspecified:
        break;
    }
    return '9';
}

// Up to version 1 an imperial height is three digits, feet then inches ("509").
std::string height(const AamvaPayloadDescription& card) {
    if (card.version <= 1)
        return card.heightMetric ? zeroPadded(card.height, 3)
                                 : std::to_string(card.height / 12) + zeroPadded(card.height % 12, 2);
    const std::string unit = card.heightMetric ? " cm" : " in";
    // The 2003 and 2005 examples pad the number with a space, later ones with a zero.
    if (card.version <= 3) {
        std::string number = std::to_string(card.height);
        return std::string(number.size() < 3 ? 3 - number.size() : 0, ' ') + number + unit;
    }
    return zeroPadded(card.height, 3) + unit;
}

// Weight range code of the 2003 and 2005 cards, from the weight in pounds.
std::string weightRange(const AamvaPayloadDescription& card) {
    const int pounds = card.weightMetric ? (card.weight * 22046 + 5000) / 10000 : card.weight;
    static const int upperBounds[] = {70, 100, 130, 160, 190, 220, 250, 280, 320};
    int code = 0;
    while (code < 9 && pounds > upperBounds[code])
        ++code;
    if (card.version == 2 && code < 9)
        ++code; // the 2003 table starts at 1
    return std::to_string(code);
}

std::string joinNonEmpty(const std::vector<std::string>& parts, char separator) {
    std::string out;
    for (const std::string& part : parts) {
        if (part.empty())
            continue;
        if (!out.empty())
            out += separator;
        out += part;
    }
    return out;
}

class ElementList {
public:
    explicit ElementList(std::string subfile) : subfile_(std::move(subfile)) {}
    void add(const std::string& id, const std::string& value) { items_.push_back({subfile_, id, value}); }
    void addIf(bool condition, const std::string& id, const std::string& value) {
        if (condition)
            add(id, value);
    }
    std::vector<AamvaPayloadElement> take() { return std::move(items_); }

private:
    std::string subfile_;
    std::vector<AamvaPayloadElement> items_;
};

void addVersion1Elements(const AamvaPayloadDescription& card, ElementList& list) {
    std::vector<std::string> nameParts = {card.familyName, card.firstName, card.middleNames};
    if (!card.suffix.empty())
        nameParts.push_back(card.suffix);
    std::string fullName;
    for (std::size_t i = 0; i < nameParts.size(); ++i)
        fullName += (i ? "," : "") + nameParts[i];
    list.add("DAQ", card.licenceNumber);
    list.add("DAA", fullName);
    list.add("DAG", card.street);
    list.addIf(!card.street2.empty(), "DAH", card.street2);
    list.add("DAI", card.city);
    list.add("DAJ", card.jurisdictionCode);
    list.add("DAK", padRight(card.postalCode, 11));
    list.add("DAR", "D   ");
    list.add("DAS", "NONE");
    list.add("DAT", "NONE");
    list.addIf(card.expiry.year != 0, "DBA", date(card.expiry, card));
    list.addIf(card.birth.year != 0, "DBB", date(card.birth, card));
    list.add("DBC", std::string(1, sexCode(card)));
    list.addIf(card.issue.year != 0, "DBD", date(card.issue, card));
    list.addIf(card.height != 0, card.heightMetric ? "DAV" : "DAU", height(card));
    list.addIf(card.weight != 0, card.weightMetric ? "DAX" : "DAW", zeroPadded(card.weight, 3));
    list.addIf(!card.eyeColour.empty(), "DAY", card.eyeColour);
    list.addIf(!card.hairColour.empty(), "DAZ", card.hairColour);
}

// Versions 2 and 3: given names in one element, a weight range instead of a weight.
void addVersion2Elements(const AamvaPayloadDescription& card, ElementList& list) {
    list.add("DCA", "D");
    list.add("DCB", "NONE");
    list.add("DCD", "NONE");
    list.addIf(card.expiry.year != 0, "DBA", date(card.expiry, card));
    list.add("DCS", card.familyName);
    list.add("DCT", joinNonEmpty({card.firstName, card.middleNames}, ','));
    list.add("DCU", card.suffix.empty() ? "NONE" : card.suffix);
    list.addIf(card.issue.year != 0, "DBD", date(card.issue, card));
    list.addIf(card.birth.year != 0, "DBB", date(card.birth, card));
    list.add("DBC", std::string(1, sexCode(card)));
    list.add("DAY", card.eyeColour.empty() ? "UNK" : card.eyeColour);
    list.addIf(card.height != 0, "DAU", height(card));
    list.addIf(card.weight != 0, "DCE", weightRange(card));
    list.add("DAG", card.street);
    list.addIf(!card.street2.empty(), "DAH", card.street2);
    list.add("DAI", card.city);
    list.add("DAJ", card.jurisdictionCode);
    list.add("DAK", padRight(card.postalCode, 11));
    list.add("DAQ", card.licenceNumber);
    list.add("DCF", "DOC" + card.licenceNumber);
    list.add("DCG", card.canadian ? (card.version == 2 ? "CDN" : "CAN") : "USA");
    list.add("DCH", "NONE");
    list.addIf(!card.hairColour.empty(), "DAZ", card.hairColour);
}

void addVersion4Elements(const AamvaPayloadDescription& card, ElementList& list) {
    list.add("DCA", "D");
    list.add("DCB", "NONE");
    list.add("DCD", "NONE");
    list.addIf(card.expiry.year != 0, "DBA", date(card.expiry, card));
    list.add("DCS", card.familyName);
    list.add("DAC", card.firstName);
    list.add("DAD", card.middleNames.empty() ? "NONE" : card.middleNames);
    list.addIf(card.issue.year != 0, "DBD", date(card.issue, card));
    list.addIf(card.birth.year != 0, "DBB", date(card.birth, card));
    list.add("DBC", std::string(1, sexCode(card)));
    list.add("DAY", card.eyeColour.empty() ? "UNK" : card.eyeColour);
    list.addIf(card.height != 0, "DAU", height(card));
    list.add("DAG", card.street);
    list.addIf(!card.street2.empty(), "DAH", card.street2);
    list.add("DAI", card.city);
    list.add("DAJ", card.jurisdictionCode);
    list.add("DAK", padRight(card.postalCode, 11));
    list.add("DAQ", card.licenceNumber);
    list.add("DCF", "DOC" + card.licenceNumber);
    list.add("DCG", card.canadian ? "CAN" : "USA");
    list.add("DDE", "N");
    list.add("DDF", "N");
    list.add("DDG", "N");
    list.addIf(!card.hairColour.empty(), "DAZ", card.hairColour);
    list.addIf(!card.suffix.empty(), "DCU", card.suffix);
    list.addIf(card.weight != 0, card.weightMetric ? "DAX" : "DAW", zeroPadded(card.weight, 3));
    list.addIf(card.version >= 6, "DDK", "1");
    list.addIf(card.version >= 7, "DDL", "0");
}

std::string subfileBytes(const std::vector<AamvaPayloadElement>& elements, const std::string& type) {
    std::string out = type;
    std::size_t count = 0;
    for (const AamvaPayloadElement& e : elements)
        if (e.subfile == type)
            ++count;
    for (const AamvaPayloadElement& e : elements) {
        if (e.subfile != type)
            continue;
        out += e.id + e.value;
        out += --count == 0 ? '\r' : '\n';
    }
    return out;
}

} // namespace

int AamvaPayloadWriter::headerLength(int version) {
    return version <= 1 ? 19 : 21;
}

std::vector<AamvaPayloadElement> AamvaPayloadWriter::elements(const AamvaPayloadDescription& card) {
    ElementList card_elements(card.subfileType);
    if (card.version <= 1)
        addVersion1Elements(card, card_elements);
    else if (card.version <= 3)
        addVersion2Elements(card, card_elements);
    else
        addVersion4Elements(card, card_elements);
    std::vector<AamvaPayloadElement> all = card_elements.take();
    for (const auto& [id, value] : card.jurisdictionElements)
        all.push_back({card.jurisdictionSubfile, id, value});
    return all;
}

std::string AamvaPayloadWriter::write(const AamvaPayloadDescription& card) {
    const std::vector<AamvaPayloadElement> all = elements(card);
    std::vector<std::pair<std::string, std::string>> subfiles = {
        {card.subfileType, subfileBytes(all, card.subfileType)}};
    if (!card.jurisdictionElements.empty())
        subfiles.emplace_back(card.jurisdictionSubfile, subfileBytes(all, card.jurisdictionSubfile));

    std::string out = "@\n\x1e\r";
    out += card.version == 0 ? "AAMVA" : "ANSI ";
    out += card.iin + zeroPadded(card.version, 2);
    if (card.version >= 2)
        out += zeroPadded(card.jurisdictionVersion, 2);
    out += zeroPadded(static_cast<long>(subfiles.size()), 2);

    long offset = headerLength(card.version) + 10 * static_cast<long>(subfiles.size());
    for (const auto& [type, bytes] : subfiles) {
        out += type + zeroPadded(offset, 4) + zeroPadded(static_cast<long>(bytes.size()), 4);
        offset += static_cast<long>(bytes.size());
    }
    for (const auto& subfile : subfiles)
        out += subfile.second;
    return out;
}

} // namespace glyphor::samples
