// Reads the date elements of a card. US cards write MMDDCCYY and Canadian and version 1 cards
// CCYYMMDD, but enough cards use the other order that a value which is no date in the expected
// order is tried in the other one. Within years 1800..2199 the two orders cannot both fit.
#ifndef ZYR_AAMVA_DATE_READER_H
#define ZYR_AAMVA_DATE_READER_H

#include "ZyrReaderLowLevelAPI.h"

#include <string_view>

namespace zyr {

class AamvaDateReader {
public:
    enum class Order { MonthFirst, YearFirst }; // MMDDCCYY, CCYYMMDD

    // Blank, placeholders, "00000000" and values without a date's digits give absent(). A value
    // that is no date in either order keeps the numbers read in the expected order.
    static AAMVADate read(std::string_view value, Order expected);

    static AAMVADate absent() { return {AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT}; }

    // A real calendar day in the years cards use.
    static bool plausible(const AAMVADate& date);

private:
    static AAMVADate fromDigits(std::string_view eightDigits, Order order);
};

} // namespace zyr

#endif
