#include "AamvaParser.h"
#include "AamvaPayloadWriter.h"
#include "AamvaRecordBuilder.h"
#include "ZyrReaderLowLevelAPI.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using glyphor::samples::AamvaPayloadDescription;
using glyphor::samples::AamvaPayloadWriter;

// The card is written once, before any clock starts.
const std::string& typicalCard() {
    static const std::string card = AamvaPayloadWriter::write(AamvaPayloadDescription::typical(9, false));
    return card;
}

const uint8_t* bytes() {
    return reinterpret_cast<const uint8_t*>(typicalCard().data());
}

void ParseDocument(benchmark::State& state) {
    zyr::AamvaDocument document;
    for (auto _ : state) {
        const int32_t code = zyr::AamvaParser::parse(bytes(), typicalCard().size(), document);
        benchmark::DoNotOptimize(code);
        benchmark::DoNotOptimize(document.identity.birth);
    }
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(typicalCard().size()));
}
BENCHMARK(ParseDocument);

void ParseAndBuildRecord(benchmark::State& state) {
    zyr::AamvaDocument document;
    for (auto _ : state) {
        zyr::AamvaParser::parse(bytes(), typicalCard().size(), document);
        zyr::AamvaRecordPtr record = zyr::AamvaRecordBuilder::build(document);
        benchmark::DoNotOptimize(record->DataItems);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ParseAndBuildRecord);

void LibraryParseCall(benchmark::State& state) {
    if (ZyrReader_ParseInitialise() != ZYR_OK) {
        state.SkipWithError("parser did not start");
        return;
    }
    const auto length = static_cast<int32_t>(typicalCard().size());
    for (auto _ : state) {
        AAMVARecord* record = nullptr;
        if (ZyrReader_ParseAAMVA(bytes(), length, &record, 0) != ZYR_OK) {
            state.SkipWithError("parse failed");
            break;
        }
        ZyrReader_DestroyCachedObject(record);
    }
    state.SetItemsProcessed(state.iterations());
    ZyrReader_ParseShutdown();
}
BENCHMARK(LibraryParseCall);

} // namespace
