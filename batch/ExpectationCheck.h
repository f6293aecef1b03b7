// Judges a result against the expected-text file beside its image: the file holds the bytes of
// each symbol the image contains, one symbol per line (a symbol's own line ends stay in it).
#pragma once

#include "BatchRow.h"

#include <optional>
#include <string>
#include <vector>

enum class Verdict {
    Pass,     // the symbols read are exactly the expected ones, in any order
    Misread,  // a symbol was read that the image does not hold (or holds fewer times)
    Miss,     // nothing, or only some of the expected symbols, was read
    Unchecked // no expected-text file
};

class ExpectationCheck {
public:
    // The same folder and base name as the image, with ".txt".
    static std::string ExpectedPath(const std::string& imagePath);

    // The file's bytes, or nothing when it does not exist or cannot be read.
    static std::optional<std::string> ReadExpected(const std::string& imagePath);

    // An image without symbols expects an empty file. A single line end at the end of the file is
    // allowed when the symbols do not account for it (files written by hand usually have one). A
    // symbol counts as expected when its bytes stand on whole lines of the file that no other
    // symbol read takes. When the file holds UTF-8 text, symbols may match by their text instead.
    static Verdict Judge(const std::optional<std::string>& expected, const std::vector<DecodedSymbol>& symbols);

    static const char* Name(Verdict verdict);
};
