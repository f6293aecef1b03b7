// Names of the reader library's symbology codes in the outputs.
#pragma once

#include <cstdint>
#include <string>

class SymbologyNames {
public:
    // "QRCode", "PDF417", ...; a code the library does not define gives "Symbology <n>".
    static std::string Name(int32_t symbology);
};
