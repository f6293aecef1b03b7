#include "AAMVAParseResult.h"

#include <cstring>

AAMVAParseResult::~AAMVAParseResult() {
    ReleaseRecord();
}

void AAMVAParseResult::ReleaseRecord() {
    if (record_ != nullptr) {
        ZyrReader_DestroyCachedObject(record_);
        record_ = nullptr;
    }
}

int32_t AAMVAParseResult::Parse(const uint8_t* bytes, int32_t length) {
    int32_t code = ZYR_OK;
    if (!ZyrReader_IsParsingInitialised())
        code = ZyrReader_ParseInitialise();
    // The old record goes even when the parser could not be started.
    ReleaseRecord();
    if (code != ZYR_OK)
        return code;

    code = ZyrReader_ParseAAMVA(bytes, length, &record_, 0);
    if (code != ZYR_OK) {
        // A failing library must not leave us holding what it wrote into the handle.
        record_ = nullptr;
        return code;
    }

    const int32_t copied = (bytes != nullptr && length > 0) ? length : 0;
    std::unique_ptr<uint8_t[]> raw;
    if (copied > 0) {
        raw.reset(new uint8_t[static_cast<std::size_t>(copied)]);
        std::memcpy(raw.get(), bytes, static_cast<std::size_t>(copied));
    }
    raw_ = std::move(raw);
    rawLength_ = copied;
    return ZYR_OK;
}
