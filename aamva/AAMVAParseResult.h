// One parse of a result's bytes by the reader library: the library's record and a private copy of
// the bytes that produced it. Both live until the object is destroyed or parses again.
#ifndef GLYPHOR_AAMVA_PARSE_RESULT_H
#define GLYPHOR_AAMVA_PARSE_RESULT_H

#include "ZyrReaderLowLevelAPI.h"

#include <cstdint>
#include <memory>

class AAMVAParseResult {
public:
    AAMVAParseResult() = default;
    ~AAMVAParseResult();
    AAMVAParseResult(const AAMVAParseResult&) = delete;
    AAMVAParseResult& operator=(const AAMVAParseResult&) = delete;

    // Starts the library's parser when it is not running yet, drops the record held so far, then
    // parses. Returns 0, or the library's code from the parser start or the parse. The raw copy is
    // replaced only when the parse succeeds.
    int32_t Parse(const uint8_t* bytes, int32_t length);

    // The library's record; null before the first successful parse and after a failed one.
    const AAMVARecord* Record() const { return record_; }
    // The copy of the bytes last parsed successfully (null when there were none).
    const uint8_t* RawData() const { return raw_.get(); }
    int32_t RawLength() const { return rawLength_; }

private:
    void ReleaseRecord();

    AAMVARecord* record_ = nullptr;
    std::unique_ptr<uint8_t[]> raw_;
    int32_t rawLength_ = 0;
};

#endif
