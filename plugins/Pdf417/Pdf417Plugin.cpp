#include "PluginBoundary.h"
#include "ZXingDecoder.h"

namespace {

class Pdf417Decoder : public kvdecode::ZXingDecoder {
public:
    Pdf417Decoder() : ZXingDecoder(ZXing::BarcodeFormat::PDF417, ZXing::BarcodeFormat::PDF417) {}
};

} // namespace

KVDECODE_DEFINE_PLUGIN(Pdf417Decoder)
