#include "AamvaMeasureReader.h"

#include "AamvaText.h"

namespace zyr {
namespace {

struct NumberAndUnit {
    long number = 0;
    std::size_t digits = 0;
    std::string_view unit;
};

bool split(std::string_view v, NumberAndUnit& out) {
    std::size_t run = 0;
    while (run < v.size() && AamvaText::isDigit(v[run]))
        ++run;
    if (run == 0 || !AamvaText::toNumber(v.substr(0, run), out.number))
        return false;
    out.digits = run;
    out.unit = AamvaText::trim(v.substr(run));
    return true;
}

bool unitIs(std::string_view unit, std::string_view upperPrefix) {
    return unit.size() >= upperPrefix.size() &&
           AamvaText::equalsUpper(unit.substr(0, upperPrefix.size()), upperPrefix);
}

// "5'-04\"", "5'10\"", "5-10": one digit of feet, then inches up to 11.
bool feetAndInchesMarked(std::string_view v, AAMVAMeasure& out) {
    if (v.size() < 3 || !AamvaText::isDigit(v[0]) || AamvaText::isDigit(v[1]))
        return false;
    std::size_t i = 1;
    while (i < v.size() && !AamvaText::isDigit(v[i]))
        ++i;
    const std::size_t start = i;
    while (i < v.size() && AamvaText::isDigit(v[i]))
        ++i;
    long inches = 0;
    if (i == start || i - start > 2 || !AamvaText::toNumber(v.substr(start, i - start), inches) ||
        inches > 11)
        return false;
    out = {static_cast<int32_t>((v[0] - '0') * 12 + inches), AAMVA_UNIT_INCHES};
    return true;
}

} // namespace

AAMVAMeasure AamvaMeasureReader::height(std::string_view value, bool metricElement) {
    const std::string_view v = AamvaText::trim(value);
    if (AamvaText::isPlaceholder(v))
        return absent();
    if (v.find_first_of("'\"-") != std::string_view::npos) {
        AAMVAMeasure marked{};
        return feetAndInchesMarked(v, marked) ? marked : absent();
    }
    NumberAndUnit n;
    if (!split(v, n) || n.number == 0)
        return absent();
    const auto number = static_cast<int32_t>(n.number);
    if (unitIs(n.unit, "IN"))
        return {number, AAMVA_UNIT_INCHES};
    if (unitIs(n.unit, "CM"))
        return {number, AAMVA_UNIT_CENTIMETRES};
    if (!n.unit.empty())
        return absent();
    if (metricElement)
        return {number, AAMVA_UNIT_CENTIMETRES};
    // A bare number: feet and inches ("509"), else centimetres or inches by its size.
    const long feet = n.number / 100;
    const long inches = n.number % 100;
    if (n.digits == 3 && feet >= 3 && feet <= 8 && inches <= 11)
        return {static_cast<int32_t>(feet * 12 + inches), AAMVA_UNIT_INCHES};
    if (n.number >= 100 && n.number <= 250)
        return {number, AAMVA_UNIT_CENTIMETRES};
    if (n.digits <= 2 && n.number >= 36 && n.number <= 96)
        return {number, AAMVA_UNIT_INCHES};
    return absent();
}

AAMVAMeasure AamvaMeasureReader::weight(std::string_view value, bool metricElement) {
    const std::string_view v = AamvaText::trim(value);
    NumberAndUnit n;
    if (AamvaText::isPlaceholder(v) || !split(v, n) || n.number == 0)
        return absent();
    const auto number = static_cast<int32_t>(n.number);
    if (unitIs(n.unit, "LB"))
        return {number, AAMVA_UNIT_POUNDS};
    if (unitIs(n.unit, "KG"))
        return {number, AAMVA_UNIT_KILOGRAMS};
    if (!n.unit.empty())
        return absent();
    return {number, metricElement ? AAMVA_UNIT_KILOGRAMS : AAMVA_UNIT_POUNDS};
}

} // namespace zyr
