#include "HeadlessView.h"

#include "EciText.h"
#include "ImageFileLoader.h"
#include "TestSession.h"

std::vector<BatchRow> HeadlessView::TakeRows() {
    std::vector<BatchRow> rows;
    rows.swap(m_rows);
    m_symbols.clear();
    if (m_session) {
        m_session->results.ClearData();
    }
    return rows;
}

std::vector<std::string> HeadlessView::TakeMessages() {
    std::vector<std::string> messages;
    messages.swap(m_messages);
    return messages;
}

void HeadlessView::PostShowNextResult() {
    // Decoding is synchronous here: the row posted is the one just finished, and the symbols seen
    // since the previous row are its own.
    if (!m_session) {
        return;
    }
    std::optional<ResultRow> row = m_session->decode.TakeNextRow();
    if (!row) {
        return;
    }
    BatchRow batchRow;
    batchRow.row = std::move(*row);
    if (const std::optional<GLD_DecodeData> data =
            m_session->results.DataAt(static_cast<int>(m_rows.size()))) {
        batchRow.data.assign(data->str(), static_cast<size_t>(data->size()));
        batchRow.symbology = data->Symbology;
    }
    batchRow.symbols.swap(m_symbols);
    m_rows.push_back(std::move(batchRow));
}

void HeadlessView::PostShowNextImage() {
    if (m_session) {
        m_session->ShowNextImageStep();
    }
}

void HeadlessView::LoadPictureFile(PictureId picture, const std::string& path) {
    if (picture != PictureId::Main) {
        return;
    }
    m_image.reset();
    m_loadError.clear();
    m_image = ImageFileLoader::Load(path, m_loadError);
}

std::shared_ptr<const ZyrImage> HeadlessView::PictureImage(PictureId picture) {
    return picture == PictureId::Main ? m_image : nullptr;
}

void HeadlessView::ShowMessage(MessageKind, const std::string& text) {
    m_messages.push_back(text);
}

void HeadlessView::SymbolAttached(int32_t, const ZyrSymbolResult& symbol) {
    BatchSymbol seen;
    seen.symbology = symbol.Symbology;
    seen.dataType = symbol.DataType;
    seen.eci = symbol.Eci;
    if (symbol.Data && symbol.DataLength > 0) {
        seen.bytes.assign(reinterpret_cast<const char*>(symbol.Data), static_cast<size_t>(symbol.DataLength));
    }
    seen.text = EciText::SymbolText(seen.dataType, seen.eci, seen.bytes);
    m_symbols.push_back(std::move(seen));
}
