// Finds and reads the header of an AAMVA card data stream. Every field is located relative to
// the file type, because the control bytes before it are often lost or doubled in transit, and
// the header layout (19 or 21 bytes) is decided by where the first designator really starts.
#ifndef ZYR_AAMVA_HEADER_READER_H
#define ZYR_AAMVA_HEADER_READER_H

#include "AamvaHeader.h"
#include "AamvaRepairs.h"

#include <string_view>

namespace zyr {

class AamvaHeaderReader {
public:
    // ZYR_OK, ZYR_ERR_NOT_AAMVA (no header where one must be) or ZYR_ERR_AAMVA_TRUNCATED (the
    // data ends inside the header or its designators).
    // Each deviation from the standard header is noted in repairs.
    static int32_t read(std::string_view data, AamvaHeader& header, AamvaRepairs& repairs);

    // Leading bytes (scanner prefixes, byte order marks) tolerated before the header.
    static constexpr std::size_t kLeadingBytes = 64;

private:
    static std::size_t markerLength(std::string_view data, std::size_t at);
    static bool takePrefix(std::string_view data, std::size_t marker, AamvaHeader& header);
    static void notePrefix(std::string_view data, std::size_t marker, const AamvaHeader& header,
                           AamvaRepairs& repairs);
    static bool designatorAt(std::string_view data, std::size_t at, const AamvaHeader& header);
    static bool looksLikeCutHeader(std::string_view data);
    static int32_t readFields(std::string_view data, std::size_t fieldsStart, AamvaHeader& header,
                              AamvaRepairs& repairs);
};

} // namespace zyr

#endif
