// Turns a parsed document into the fixed-layout AAMVARecord clients read. Text longer than its
// field is cut; every text field is NUL-terminated.
#ifndef ZYR_AAMVA_RECORD_BUILDER_H
#define ZYR_AAMVA_RECORD_BUILDER_H

#include "AamvaDocument.h"
#include "ZyrReaderLowLevelAPI.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace zyr {

// Frees a record made by AamvaRecordBuilder together with its data items.
struct AamvaRecordDeleter {
    void operator()(AAMVARecord* record) const;
};
using AamvaRecordPtr = std::unique_ptr<AAMVARecord, AamvaRecordDeleter>;

class AamvaRecordBuilder {
public:
    // May throw std::bad_alloc.
    static AamvaRecordPtr build(const AamvaDocument& document);

    // Copies text into a fixed field, cut to fit and NUL-terminated.
    template <std::size_t N> static void copyText(char (&field)[N], std::string_view text) {
        copyText(field, N, text);
    }
    static void copyText(char* field, std::size_t size, std::string_view text);
};

} // namespace zyr

#endif
