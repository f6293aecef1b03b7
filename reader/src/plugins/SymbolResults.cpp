#include "plugins/SymbolResults.h"

#include "core/ObjectRegistry.h"

#include <cmath>
#include <memory>

namespace zyr {
namespace {

struct OwnedSymbol {
    ZyrSymbolResult result{};
    std::vector<uint8_t> bytes;
};

} // namespace

int32_t orientationOf(const ZyrPoint (&corners)[4]) {
    // Image rows grow downwards, so atan2 of the top edge is already clockwise.
    double dx = double(corners[1].X) - corners[0].X;
    double dy = double(corners[1].Y) - corners[0].Y;
    if (dx == 0 && dy == 0) { // a degenerate top edge: try the bottom one
        dx = double(corners[2].X) - corners[3].X;
        dy = double(corners[2].Y) - corners[3].Y;
    }
    if (dx == 0 && dy == 0)
        return 0;
    int32_t degrees = int32_t(std::lround(std::atan2(dy, dx) * 180.0 / M_PI));
    return (degrees % 360 + 360) % 360;
}

const ZyrSymbolResult* makeSymbolResult(const DecodedSymbol& symbol) {
    auto owned = std::make_shared<OwnedSymbol>();
    owned->bytes.reserve(symbol.data.size() + 1);
    owned->bytes.assign(symbol.data.begin(), symbol.data.end());
    owned->bytes.push_back(0);
    ZyrSymbolResult& r = owned->result;
    r.Symbology = symbol.symbology;
    r.Orientation = orientationOf(symbol.corners);
    r.DataType = symbol.dataType;
    r.Data = owned->bytes.data();
    r.DataLength = int32_t(symbol.data.size());
    r.Eci = symbol.eci;
    for (int i = 0; i < 4; ++i)
        r.Corners[i] = symbol.corners[i];
    const ZyrSymbolResult* out = &owned->result;
    ObjectRegistry::instance().add(out, [owned]() mutable { owned.reset(); });
    return out;
}

} // namespace zyr
