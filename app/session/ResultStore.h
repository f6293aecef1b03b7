// The pending result queue and the decode data list under one lock. Runs append, the decode
// callback attaches symbols, the user-interface thread takes records off as rows; results row i
// owns decode data i.
#pragma once

#include "GLD_DecodeResult.h"
#include "KVObjectPointerList.h"
#include "ZyrReaderLowLevelAPI.h"

#include <memory>
#include <mutex>
#include <optional>

// What a results row shows, in column order.
struct ResultRow {
    std::string fileName; // name of the image file on show
    std::string pluginName;
    std::string imageProcess; // "%dms" of the last image-process time
    std::string time;
    std::string results; // with "Side Left: " / "Side Right: " in front for two-sided images
    int32_t resultsEci = 0; // the character set results is in (an ECI; 0 and 3: ISO-8859-1)
    int32_t decodeCode = 0; // ZyrReaderError of the decode; the window shows only the results text
};

class ResultStore {
public:
    ResultStore() = default;
    ResultStore(const ResultStore&) = delete;
    ResultStore& operator=(const ResultStore&) = delete;
    ~ResultStore();

    // Queues a record with a new empty decode data buffer; returns the record (owned here).
    GLD_DecodeResult* Append(int32_t imageNumber, int32_t side, const std::string& pluginName);

    // Attaches a symbol to the first pending record of that image number. False when none
    // matches (the symbol is then left alone).
    bool AttachSymbol(int32_t imageNumber, const ZyrSymbolResult& symbol);

    // Sets a record's time text, the decode's result code and, when nothing arrived, "[NO DATA]".
    void Finish(GLD_DecodeResult* record, const std::string& time, int32_t decodeCode = ZYR_OK);

    // Takes the first pending record off the queue as a row (plug-in, time and results filled);
    // its data stays in the list.
    std::optional<ResultRow> TakeNext();

    // Empties the decode data list (Clear Results). Buffers of records still pending stay, so
    // rows added later keep their data.
    void ClearData();

    int PendingCount() const;
    int DataCount() const;
    // Copy of the data of row index, or nothing when there is no such row.
    std::optional<GLD_DecodeData> DataAt(int index) const;

    // The text a symbol shows in its row.
    static std::string SymbolText(const ZyrSymbolResult& symbol);

private:
    mutable std::mutex m_lock;
    KVObjectPointerList<GLD_DecodeResult> m_pending;
    KVObjectPointerList<GLD_DecodeData> m_data;
};
