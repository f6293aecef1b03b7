#include "PluginBoundary.h"
#include "ZXingDecoder.h"

namespace {

class AnyFormatDecoder : public kvdecode::ZXingDecoder {
public:
    AnyFormatDecoder() : ZXingDecoder(ZXing::BarcodeFormat::Any, ZXing::BarcodeFormat::Any) {}
};

} // namespace

KVDECODE_DEFINE_PLUGIN(AnyFormatDecoder)
