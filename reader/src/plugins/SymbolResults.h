// Library-owned symbol results made from what a plug-in reported.
#ifndef ZYR_PLUGINS_SYMBOL_RESULTS_H
#define ZYR_PLUGINS_SYMBOL_RESULTS_H

#include "plugins/PluginConnection.h"

namespace zyr {

// Rotation of the symbol in whole degrees clockwise (0..359), from the direction of its top edge.
int32_t orientationOf(const ZyrPoint (&corners)[4]);

// A registered copy of the symbol, freed by ZyrReader_DestroyCachedObject; its data is followed by
// one zero byte. Throws std::bad_alloc.
const ZyrSymbolResult* makeSymbolResult(const DecodedSymbol& symbol);

} // namespace zyr

#endif
