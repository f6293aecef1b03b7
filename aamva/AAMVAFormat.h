// Display text for the coded values of a parsed AAMVA record.
#ifndef GLYPHOR_AAMVA_FORMAT_H
#define GLYPHOR_AAMVA_FORMAT_H

#include "ZyrReaderLowLevelAPI.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

class AAMVAFormat {
public:
    // Which note VersionText gives.
    enum VersionNote {
        StandardVersion = 0,    // the standard-version name of Version
        JurisdictionVersion = 1 // "Not present" when JurisdictionVersion is absent, else empty
    };

    // The note for `which` (a VersionNote); any other value gives the empty string.
    static std::string VersionText(const AAMVARecord& record, int which);
    // "Not present", "Pre-2000 Standard", "AAMVA 2000 Standard" ... "Unknown Standard".
    static std::string StandardName(uint32_t version);

    // Empty when any component is absent, "Invalid DateTime" for a day that does not exist,
    // otherwise "%d %B %Y" with the C locale's month names ("04 July 1976").
    static std::string DateText(const AAMVADate& date);
    // Proleptic Gregorian calendar, years 100 to 9999.
    static bool IsValidDate(uint32_t year, uint32_t month, uint32_t day);

    // "69 Inches", "175 Centimetres", "180 Pounds", "82 Kilograms"; nothing for another unit.
    static std::optional<std::string> MeasureText(const AAMVAMeasure& measure);

    // A string of exactly that one character, whatever it is (a NUL included).
    static std::string ShortSexText(char shortSex);

    // Signed decimal of a 32-bit field, so an absent version (0xFFFFFFFF) reads "-1".
    static std::string Number(uint32_t value);
    static std::string Number(int32_t value);

    // A fixed-size text field up to its NUL, or the whole array when the library left none.
    static std::string FieldText(const char* field, std::size_t size);
};

// Reads a char-array member of a record: AAMVA_FIELD(record.Surname).
#define AAMVA_FIELD(member) AAMVAFormat::FieldText((member), sizeof(member))

#endif
