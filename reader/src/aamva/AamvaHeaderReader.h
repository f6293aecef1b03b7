// Finds and reads the header of an AAMVA card data stream. Every field is located relative to
// the file type, because the control bytes before it are often lost or doubled in transit, and
// the header layout (19 or 21 bytes) is decided by where the first designator really starts.
#ifndef ZYR_AAMVA_HEADER_READER_H
#define ZYR_AAMVA_HEADER_READER_H

#include "AamvaHeader.h"

#include <string_view>

namespace zyr {

class AamvaHeaderReader {
public:
    // ZYR_OK, ZYR_ERR_NOT_AAMVA (no header where one must be) or ZYR_ERR_AAMVA_TRUNCATED (the
    // data ends inside the header or its designators).
    static int32_t read(std::string_view data, AamvaHeader& header);

    // Leading bytes (scanner prefixes, byte order marks) tolerated before the header.
    static constexpr std::size_t kLeadingBytes = 64;

private:
    static std::size_t markerLength(std::string_view data, std::size_t at);
    static bool takePrefix(std::string_view data, std::size_t marker, AamvaHeader& header);
    static bool designatorAt(std::string_view data, std::size_t at, const AamvaHeader& header);
    static bool looksLikeCutHeader(std::string_view data);
    static int32_t readFields(std::string_view data, std::size_t fieldsStart, AamvaHeader& header);
};

} // namespace zyr

#endif
