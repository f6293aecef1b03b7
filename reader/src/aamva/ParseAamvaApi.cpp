// ZyrReader_ParseAAMVA: parses card data into a record owned by the object registry.

#include "ZyrReaderLowLevelAPI.h"
#include "aamva/AamvaParser.h"
#include "aamva/AamvaRecordBuilder.h"
#include "core/ErrorReporter.h"
#include "core/Log.h"
#include "core/ObjectRegistry.h"
#include "core/ReaderService.h"

#include <new>
#include <string>

using namespace zyr;

namespace {

// Off-standard cards still parse; the detail log says what was set right in each.
void logRepairs(const AamvaDocument& document) {
    if (!Log::enabled(ZYR_LOG_PARSE, LogDetail))
        return;
    for (const std::string& line : document.repairs.lines())
        Log::write(ZYR_LOG_PARSE, LogDetail, "off-standard data: %s", line.c_str());
}

} // namespace

extern "C" {

ZYRREADER_API int32_t ZyrReader_ParseAAMVA(const uint8_t* data, int32_t length, AAMVARecord** record,
                                           int32_t /*reserved*/) {
    if (!parseService().running())
        return ZYR_ERR_NOT_INITIALISED;
    if (record == nullptr || length < 0 || (data == nullptr && length > 0))
        return ZYR_ERR_BAD_ARGUMENT;
    try {
        AamvaDocument document;
        const int32_t result = AamvaParser::parse(data, static_cast<std::size_t>(length), document);
        if (result != ZYR_OK) {
            Log::write(ZYR_LOG_PARSE, LogError, "%d bytes not parsed: %s", length,
                       ErrorReporter::text(result));
            logRepairs(document);
            return result;
        }
        AamvaRecordPtr built = AamvaRecordBuilder::build(document);
        AAMVARecord* raw = built.get();
        if (!ObjectRegistry::instance().add(raw, [raw]() { AamvaRecordDeleter()(raw); }))
            return ZYR_ERR_OUT_OF_MEMORY;
        built.release();
        *record = raw;
        Log::write(ZYR_LOG_PARSE, LogInfo, "%d bytes parsed: version %d, IIN %s, %d data items", length,
                   static_cast<int32_t>(raw->Version), raw->IIN, raw->DataItemCount);
        logRepairs(document);
        return ZYR_OK;
    } catch (const std::bad_alloc&) {
        return ZYR_ERR_OUT_OF_MEMORY;
    }
}

} // extern "C"
