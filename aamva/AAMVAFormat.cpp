#include "AAMVAFormat.h"

#include <clocale>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <locale.h>

namespace {

const char* const kStandardNames[] = {
    "Pre-2000 Standard",   "AAMVA 2000 Standard", "AAMVA 2003 Standard",
    "AAMVA 2005 Standard", "AAMVA 2009 Standard", "AAMVA 2010 Standard",
    "AAMVA 2011 Standard", "AAMVA 2012 Standard", "AAMVA 2013 Standard",
};

bool IsLeapYear(uint32_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

// Month names must not follow the user's locale, which the GUI toolkit switches on at start-up.
locale_t CLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
    return locale;
}

} // namespace

std::string AAMVAFormat::VersionText(const AAMVARecord& record, int which) {
    switch (which) {
    case StandardVersion:
        return StandardName(record.Version);
    case JurisdictionVersion:
        return record.JurisdictionVersion == AAMVA_NOT_PRESENT ? "Not present" : "";
    default:
        return "";
    }
}

std::string AAMVAFormat::StandardName(uint32_t version) {
    if (version == AAMVA_NOT_PRESENT)
        return "Not present";
    if (version < sizeof(kStandardNames) / sizeof(kStandardNames[0]))
        return kStandardNames[version];
    return "Unknown Standard";
}

bool AAMVAFormat::IsValidDate(uint32_t year, uint32_t month, uint32_t day) {
    static const uint32_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1)
        return false;
    uint32_t last = kDays[month - 1];
    if (month == 2 && IsLeapYear(year))
        last = 29;
    return day <= last;
}

std::string AAMVAFormat::DateText(const AAMVADate& date) {
    const uint32_t day = date.Day, month = date.Month, year = date.Year;
    if (day == AAMVA_NOT_PRESENT || month == AAMVA_NOT_PRESENT || year == AAMVA_NOT_PRESENT)
        return "";
    if (!IsValidDate(year, month, day))
        return "Invalid DateTime";
    std::tm tm{};
    tm.tm_year = static_cast<int>(year) - 1900;
    tm.tm_mon = static_cast<int>(month) - 1;
    tm.tm_mday = static_cast<int>(day);
    char text[256];
    const locale_t locale = CLocale();
    const std::size_t n = locale != static_cast<locale_t>(0)
                              ? strftime_l(text, sizeof text, "%d %B %Y", &tm, locale)
                              : std::strftime(text, sizeof text, "%d %B %Y", &tm);
    return std::string(text, n);
}

std::optional<std::string> AAMVAFormat::MeasureText(const AAMVAMeasure& measure) {
    const char* format = nullptr;
    switch (measure.Unit) {
    case AAMVA_UNIT_INCHES:
        format = "%d Inches";
        break;
    case AAMVA_UNIT_CENTIMETRES:
        format = "%d Centimetres";
        break;
    case AAMVA_UNIT_POUNDS:
        format = "%d Pounds";
        break;
    case AAMVA_UNIT_KILOGRAMS:
        format = "%d Kilograms";
        break;
    default:
        return std::nullopt;
    }
    char text[64];
    const int n = std::snprintf(text, sizeof text, format, static_cast<int>(measure.Value));
    return std::string(text, n > 0 ? static_cast<std::size_t>(n) : 0);
}

std::string AAMVAFormat::ShortSexText(char shortSex) {
    return std::string(1, shortSex);
}

std::string AAMVAFormat::Number(uint32_t value) {
    return Number(static_cast<int32_t>(value));
}

std::string AAMVAFormat::Number(int32_t value) {
    return std::to_string(value);
}

std::string AAMVAFormat::FieldText(const char* field, std::size_t size) {
    const void* end = std::memchr(field, '\0', size);
    return std::string(field, end ? static_cast<const char*>(end) - field : size);
}
