// Shared helpers of the parser tests: parse bytes into a record, and render a record's fields
// as text so that whole records compare in one assertion with a readable difference.
#pragma once

#include "AamvaRecordBuilder.h"

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

struct ParsedRecord {
    int32_t code = -1;
    zyr::AamvaRecordPtr record;
    std::vector<std::string> repairs; // as the parser noted them
};

ParsedRecord parseRecord(const std::string& bytes);

inline bool operator==(const AAMVADate& a, const AAMVADate& b) {
    return a.Day == b.Day && a.Month == b.Month && a.Year == b.Year;
}
inline bool operator==(const AAMVAMeasure& a, const AAMVAMeasure& b) {
    return a.Value == b.Value && a.Unit == b.Unit;
}
std::ostream& operator<<(std::ostream& out, const AAMVADate& d);
std::ostream& operator<<(std::ostream& out, const AAMVAMeasure& m);

AAMVADate date(uint32_t year, uint32_t month, uint32_t day);
inline AAMVADate noDate() {
    return {AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT};
}
inline AAMVAMeasure noMeasure() {
    return {0, 0};
}

// A copy of a packed record's integer field, so that test macros do not bind a misaligned
// reference to it.
template <class T> T unpacked(T value) {
    return value;
}

// "ID=value" for each data item, joined by "|".
std::string itemList(const AAMVARecord& record);

// Every field of a record as text, by short name: licence, full, surname, forename, middle,
// suffix, given, sex, short, birth, issue, expiry (YYYY-MM-DD, "-" when absent), street, city,
// state, postal, country, height, weight ("69 in", "175 cm", "134 lb", "61 kg", "-"), hair, eye,
// fileType, iin, issuer, version, jversion ("-" when absent), items (as itemList).
using Fields = std::map<std::string, std::string>;
Fields describe(const AAMVARecord& record);

// base with the given fields replaced.
Fields with(Fields base, const Fields& changes);
// Fields written as "licence=D123|surname=DOE|..."; the second form adds the items.
Fields fieldsOf(const std::string& text);
Fields fieldsOf(const std::string& items, const std::string& text);

