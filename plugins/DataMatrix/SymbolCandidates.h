#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvdecode {

// An area of an image that may hold a Data Matrix, in the image's pixels.
struct Candidate {
    int x0, y0, x1, y1; // bounding box, x1 and y1 exclusive
    double score;       // higher first: dark runs per row, what a module pattern has and print lacks
};

// A cheap finder for the places worth a full Data Matrix search. Pixels darker than their
// neighbourhood are joined into 8-connected blobs; a symbol is one blob (its solid L and clock
// track tie the modules together) with a box of at most 1 to 4, a middling share of dark pixels,
// and at least one and a half dark runs per row and per column, about as dense across as down
// (square modules). Text glyphs, ruled lines, PDF417, photographs and flat areas fail one of
// those tests.
//
// grey: 8-bit pixels, rows packed. Large images are looked at in half resolution. Candidates come
// out best first (most runs), at most maxCount.
std::vector<Candidate> findSymbolCandidates(const uint8_t* grey, int width, int height, size_t maxCount);

} // namespace kvdecode
