// Reads height and weight values in the forms cards use: "069 in", " 70 IN", "175 cm",
// feet-and-inches digits of version 1 ("509" = 5 ft 9 in), "5'-04\"", "5-10", and weights with
// or without a unit.
#ifndef ZYR_AAMVA_MEASURE_READER_H
#define ZYR_AAMVA_MEASURE_READER_H

#include "ZyrReaderLowLevelAPI.h"

#include <string_view>

namespace zyr {

class AamvaMeasureReader {
public:
    // metricElement: the value comes from the centimetre element (DAV), so a bare number is cm.
    // Feet and inches are turned into inches. Unreadable or blank values give absent().
    static AAMVAMeasure height(std::string_view value, bool metricElement);

    // metricElement: the kilogram element (DAX). A unit written in the value wins.
    static AAMVAMeasure weight(std::string_view value, bool metricElement);

    static AAMVAMeasure absent() { return {0, 0}; }
};

} // namespace zyr

#endif
