// Writes AAMVA DL/ID card data streams as a card's PDF417 carries them: header, subfile
// designators with correct offsets and lengths, the card subfile and an optional jurisdiction
// subfile. Each version gets its own header layout, element set and value formats.
#ifndef GLYPHOR_SAMPLES_AAMVA_PAYLOAD_WRITER_H
#define GLYPHOR_SAMPLES_AAMVA_PAYLOAD_WRITER_H

#include "AamvaPayloadDescription.h"

#include <string>
#include <vector>

namespace glyphor::samples {

// One data element as written: the subfile it is in, its three-letter ID and its value.
struct AamvaPayloadElement {
    std::string subfile;
    std::string id;
    std::string value;
};

class AamvaPayloadWriter {
public:
    // The elements the payload holds, in the order they are written.
    static std::vector<AamvaPayloadElement> elements(const AamvaPayloadDescription& card);

    // The whole data stream.
    static std::string write(const AamvaPayloadDescription& card);

    // Header length before the designators: 19 bytes up to version 1, 21 from version 2.
    static int headerLength(int version);
};

} // namespace glyphor::samples

#endif
