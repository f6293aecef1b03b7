// Subfiles and data elements of an AAMVA card data stream, in order of appearance.
#ifndef ZYR_AAMVA_BODY_H
#define ZYR_AAMVA_BODY_H

#include <cstddef>
#include <string>
#include <vector>

namespace zyr {

struct AamvaSubfile {
    std::string type;        // "DL", "ID", "EN" or "Z" + a letter
    std::size_t start = 0;   // position of its type, or of its first element when the type is missing
    bool prefixed = true;    // the subfile began with its type, as it should
    bool terminated = false; // its last element was ended by a segment terminator
    int designator = -1;     // index of the header designator it answers to, -1 for none
};

struct AamvaElement {
    std::string id;    // three capital letters
    std::string value; // as it stood in the data, padding included
    int subfile = 0;   // index into the subfiles
};

struct AamvaBody {
    std::vector<AamvaSubfile> subfiles;
    std::vector<AamvaElement> elements;
    std::size_t end = 0; // first byte after the last element's value
};

} // namespace zyr

#endif
