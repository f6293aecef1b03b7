// Builds AAMVA records in memory the way the reader library lays them out, for the viewer's tests.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <cstring>
#include <memory>
#include <string>
#include <vector>

struct TestItem {
    std::string id, name, value;
};

// Owns a record and its data items, as the library would.
class RecordBuilder {
public:
    RecordBuilder();

    // Every text field empty, every date, version and measure absent, no data items.
    RecordBuilder& Blank();
    // A filled-in licence holder with three data items; the values the golden files expect.
    RecordBuilder& Full();

    template <std::size_t N> RecordBuilder& Text(char (&field)[N], const std::string& value) {
        std::memset(field, 0, N);
        std::memcpy(field, value.data(), value.size() < N ? value.size() : N - 1);
        return *this;
    }
    RecordBuilder& Items(const std::vector<TestItem>& items);
    // Sets the count without touching the array, to check that a bad count is not trusted.
    RecordBuilder& ItemCount(int32_t count);

    AAMVARecord& record() { return *record_; }
    const AAMVARecord& get() const { return *record_; }

private:
    std::unique_ptr<AAMVARecord> record_;
    std::unique_ptr<AAMVADataItem[]> items_;
};

