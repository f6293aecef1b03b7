#include "ResultStore.h"

#include <cstring>

namespace {

// Appends bytes as they are. A counted append drops a trailing zero, so trailing zeros are added
// on their own.
void AppendBytes(StringBuffer& buffer, const char* bytes, uint32_t count) {
    uint32_t zeros = 0;
    while (zeros < count && bytes[count - 1 - zeros] == 0) {
        ++zeros;
    }
    buffer.append(bytes, count - zeros);
    buffer.appendNOfChar(zeros, 0);
}

} // namespace

ResultStore::~ResultStore() {
    std::lock_guard<std::mutex> lock(m_lock);
    for (int i = 0; i < m_pending.GetCount(); ++i) {
        delete m_pending.GetAt(i);
    }
    m_pending.Clear();
    for (int i = 0; i < m_data.GetCount(); ++i) {
        delete m_data.GetAt(i);
    }
    m_data.Clear();
}

GLD_DecodeResult* ResultStore::Append(int32_t imageNumber, int32_t side, const std::string& pluginName,
                                      const std::string& fileName) {
    auto* record = new GLD_DecodeResult;
    record->Outcome.file = fileName;
    record->Outcome.imageNumber = imageNumber;
    record->Outcome.side = side;
    record->Outcome.plugin = pluginName;
    record->Data = new GLD_DecodeData;
    std::lock_guard<std::mutex> lock(m_lock);
    m_pending.Add(record);
    m_data.Add(record->Data);
    return record;
}

bool ResultStore::AttachSymbol(int32_t imageNumber, const ZyrSymbolResult& symbol) {
    std::lock_guard<std::mutex> lock(m_lock);
    GLD_DecodeResult* record = nullptr;
    for (int i = 0; i < m_pending.GetCount() && !record; ++i) {
        if (m_pending.GetAt(i)->Outcome.imageNumber == imageNumber) {
            record = m_pending.GetAt(i);
        }
    }
    if (!record) {
        return false;
    }
    GLD_DecodeData& data = *record->Data;
    data.Symbology = symbol.Symbology;
    data.Orientation = symbol.Orientation;
    if (symbol.Data && symbol.DataLength > 0) {
        uint32_t count = static_cast<uint32_t>(symbol.DataLength);
        // A zero-terminated string keeps its terminator in the bytes.
        if (symbol.DataType == ZYR_DATA_STRING && symbol.Data[count - 1] == 0 && symbol.Data[count] == 0) {
            ++count;
        }
        AppendBytes(data, reinterpret_cast<const char*>(symbol.Data), count);
    }
    record->Outcome.symbols.push_back(DecodedSymbol::From(symbol));
    return true;
}

void ResultStore::Finish(GLD_DecodeResult* record, std::chrono::nanoseconds decodeTime, int32_t decodeCode) {
    std::lock_guard<std::mutex> lock(m_lock);
    record->Outcome.decode = decodeTime;
    record->Outcome.code = decodeCode;
}

std::optional<DecodeOutcome> ResultStore::TakeNext() {
    std::unique_ptr<GLD_DecodeResult> record;
    {
        std::lock_guard<std::mutex> lock(m_lock);
        if (m_pending.GetCount() == 0) {
            return std::nullopt;
        }
        record.reset(static_cast<GLD_DecodeResult*>(m_pending.RemoveAt(0)));
    }
    return std::move(record->Outcome);
}

void ResultStore::ClearData() {
    std::lock_guard<std::mutex> lock(m_lock);
    KVObjectPointerList<GLD_DecodeData> kept;
    for (int i = 0; i < m_data.GetCount(); ++i) {
        GLD_DecodeData* data = m_data.GetAt(i);
        bool pending = false;
        for (int p = 0; p < m_pending.GetCount() && !pending; ++p) {
            pending = m_pending.GetAt(p)->Data == data;
        }
        if (pending) {
            kept.Add(data);
        } else {
            delete data;
        }
    }
    m_data.Clear();
    for (int i = 0; i < kept.GetCount(); ++i) {
        m_data.Add(kept.GetAt(i));
    }
}

int ResultStore::PendingCount() const {
    std::lock_guard<std::mutex> lock(m_lock);
    return m_pending.GetCount();
}

int ResultStore::DataCount() const {
    std::lock_guard<std::mutex> lock(m_lock);
    return m_data.GetCount();
}

std::optional<GLD_DecodeData> ResultStore::DataAt(int index) const {
    std::lock_guard<std::mutex> lock(m_lock);
    if (index < 0 || index >= m_data.GetCount()) {
        return std::nullopt;
    }
    return *m_data.GetAt(index);
}
