#include "PluginBoundary.h"
#include "ZXingDecoder.h"

namespace {

class QRCodeDecoder : public kvdecode::ZXingDecoder {
public:
    QRCodeDecoder()
        : ZXingDecoder(ZXing::BarcodeFormat::QRCode | ZXing::BarcodeFormat::MicroQRCode,
                       ZXing::BarcodeFormat::QRCode | ZXing::BarcodeFormat::MicroQRCode) {}
};

} // namespace

KVDECODE_DEFINE_PLUGIN(QRCodeDecoder)
