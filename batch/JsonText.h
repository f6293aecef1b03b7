// Numbers as the batch's JSON writes them.
#pragma once

#include <cstdio>
#include <string>

// Up to six decimals without trailing zeros ("12.345678", "3"); C locale whatever the user's.
inline std::string JsonNumber(double value) {
    char text[48];
    std::snprintf(text, sizeof text, "%.6f", value);
    std::string number = text;
    const size_t comma = number.find(',');
    if (comma != std::string::npos) {
        number[comma] = '.';
    }
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') {
        number.pop_back();
    }
    return number;
}
