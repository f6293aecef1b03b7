// Writes a parsed record and the bytes it came from to a plain text file: TAB between fields,
// CR LF after every line.
#ifndef GLYPHOR_AAMVA_TEXT_EXPORT_H
#define GLYPHOR_AAMVA_TEXT_EXPORT_H

#include "ZyrReaderLowLevelAPI.h"

#include <cstdint>
#include <string>

class StringBufferList;

class AAMVATextExport {
public:
    // Appends the file's lines to lines: the raw bytes between "<AAMVA>" and "</AAMVA>" as one line,
    // then the header values, the identity fields and one line per data item (ID first).
    static void BuildLines(const AAMVARecord& record, const uint8_t* raw, int32_t rawLength,
                           StringBufferList& lines);

    // Writes the file, replacing any earlier content. On failure returns false and sets *error to
    // "Failed to save data as text to " + path.
    static bool Save(const AAMVARecord& record, const uint8_t* raw, int32_t rawLength,
                     const std::string& path, std::string* error);
};

#endif
