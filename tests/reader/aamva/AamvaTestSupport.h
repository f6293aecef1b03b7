// Shared helpers of the parser tests: parse bytes into a record, read its fields as strings.
#ifndef GLYPHOR_TESTS_AAMVA_TEST_SUPPORT_H
#define GLYPHOR_TESTS_AAMVA_TEST_SUPPORT_H

#include "AamvaRecordBuilder.h"

#include <cstdint>
#include <ostream>
#include <string>

struct ParsedRecord {
    int32_t code = -1;
    zyr::AamvaRecordPtr record;
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

// "ID=value" for each data item, joined by "|", for compact comparisons.
std::string itemList(const AAMVARecord& record);

#endif
