#include "PluginBoundary.h"
#include "ZBarDecoder.h"

KVDECODE_DEFINE_PLUGIN(kvdecode::ZBarDecoder)
