// The pending result queue and the decode data list under one lock. Runs append, the decode
// callback attaches symbols, the user-interface thread takes records off as rows; results row i
// owns decode data i.
#pragma once

#include "GLD_DecodeResult.h"
#include "KVObjectPointerList.h"
#include "ZyrReaderLowLevelAPI.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

class ResultStore {
public:
    ResultStore() = default;
    ResultStore(const ResultStore&) = delete;
    ResultStore& operator=(const ResultStore&) = delete;
    ~ResultStore();

    // Queues a record with a new empty decode data buffer; returns the record (owned here).
    GLD_DecodeResult* Append(int32_t imageNumber, int32_t side, const std::string& pluginName,
                             const std::string& fileName = {});

    // Attaches a symbol to the first pending record of that image number. False when none
    // matches (the symbol is then left alone).
    bool AttachSymbol(int32_t imageNumber, const ZyrSymbolResult& symbol);

    // Sets a record's decode time and the decode's result code.
    void Finish(GLD_DecodeResult* record, std::chrono::nanoseconds decodeTime, int32_t decodeCode = ZYR_OK);

    // Takes the first pending record's outcome off the queue; its data stays in the list.
    std::optional<DecodeOutcome> TakeNext();

    // Empties the decode data list (Clear Results). Buffers of records still pending stay, so
    // rows added later keep their data.
    void ClearData();

    int PendingCount() const;
    int DataCount() const;
    // Copy of the data of row index, or nothing when there is no such row.
    std::optional<GLD_DecodeData> DataAt(int index) const;

private:
    mutable std::mutex m_lock;
    KVObjectPointerList<GLD_DecodeResult> m_pending;
    KVObjectPointerList<GLD_DecodeData> m_data;
};
