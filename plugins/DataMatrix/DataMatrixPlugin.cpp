#include "DataMatrixDecoder.h"
#include "PluginBoundary.h"

KVDECODE_DEFINE_PLUGIN(kvdecode::DataMatrixDecoder)
