#include "AamvaDateReader.h"

#include "AamvaText.h"

#include <string>

namespace zyr {
namespace {

uint32_t number(std::string_view digits) {
    uint32_t value = 0;
    for (char c : digits)
        value = value * 10 + static_cast<uint32_t>(c - '0');
    return value;
}

bool isDateSeparator(char c) {
    return c == '-' || c == '/' || c == '.';
}

// "MM-DD-CCYY" or "CCYY-MM-DD" (any of - / .) turned into eight digits and their order.
bool separatedDate(std::string_view v, std::string& digits, AamvaDateReader::Order& order) {
    if (v.size() < 10)
        return false;
    auto digitsAt = [&](std::size_t at, std::size_t count) {
        return AamvaText::allDigits(v.substr(at, count));
    };
    if (digitsAt(0, 2) && isDateSeparator(v[2]) && digitsAt(3, 2) && isDateSeparator(v[5]) &&
        digitsAt(6, 4)) {
        digits = std::string(v.substr(0, 2)) + std::string(v.substr(3, 2)) + std::string(v.substr(6, 4));
        order = AamvaDateReader::Order::MonthFirst;
        return true;
    }
    if (digitsAt(0, 4) && isDateSeparator(v[4]) && digitsAt(5, 2) && isDateSeparator(v[7]) &&
        digitsAt(8, 2)) {
        digits = std::string(v.substr(0, 4)) + std::string(v.substr(5, 2)) + std::string(v.substr(8, 2));
        order = AamvaDateReader::Order::YearFirst;
        return true;
    }
    return false;
}

} // namespace

AAMVADate AamvaDateReader::fromDigits(std::string_view d, Order order) {
    if (order == Order::MonthFirst)
        return {number(d.substr(2, 2)), number(d.substr(0, 2)), number(d.substr(4, 4))};
    return {number(d.substr(6, 2)), number(d.substr(4, 2)), number(d.substr(0, 4))};
}

bool AamvaDateReader::plausible(const AAMVADate& date) {
    if (date.Year < 1800 || date.Year > 2199 || date.Month < 1 || date.Month > 12 || date.Day < 1)
        return false;
    static const uint32_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (date.Year % 4 == 0 && date.Year % 100 != 0) || date.Year % 400 == 0;
    const uint32_t days = kDays[date.Month - 1] + (date.Month == 2 && leap ? 1 : 0);
    return date.Day <= days;
}

AAMVADate AamvaDateReader::read(std::string_view value, Order expected) {
    const std::string_view v = AamvaText::trim(value);
    std::string digits;
    Order fixedOrder = expected;
    if (separatedDate(v, digits, fixedOrder)) {
        return fromDigits(digits, fixedOrder);
    }
    std::size_t run = 0;
    while (run < v.size() && AamvaText::isDigit(v[run]))
        ++run;
    if (run == 7) {
        // Some cards drop the month's leading zero (MDDCCYY).
        digits = "0" + std::string(v.substr(0, 7));
        expected = Order::MonthFirst;
    } else if (run >= 8) {
        digits = std::string(v.substr(0, 8)); // a stray letter after the date is ignored
    } else {
        return absent();
    }
    if (digits == "00000000")
        return absent();
    const AAMVADate first = fromDigits(digits, expected);
    if (plausible(first))
        return first;
    const AAMVADate other =
        fromDigits(digits, expected == Order::MonthFirst ? Order::YearFirst : Order::MonthFirst);
    return plausible(other) ? other : first;
}

} // namespace zyr
