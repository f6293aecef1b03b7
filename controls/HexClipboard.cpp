#include "HexClipboard.h"

#include "HexClipboardFormat.h"

#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QString>

const char* const HexClipboard::kBinaryMime = "application/x-qt-windows-mime;value=\"BinaryData\"";
const char* const HexClipboard::kTextMime = "text/plain";

namespace {

QClipboard* SystemClipboard() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) ? QGuiApplication::clipboard()
                                                                        : nullptr;
}

} // namespace

bool HexClipboard::Copy(const HexEditor& editor) {
    if (!editor.HasSelection())
        return false;
    auto payload = HexClipboardFormat::MakeCopy(editor.Data(), editor.SelectionStart(), editor.SelectionEnd(),
                                                editor.CaretMode());
    QClipboard* clipboard = SystemClipboard();
    if (!payload || !clipboard)
        return false;
    auto* mime = new QMimeData;
    mime->setData(QString::fromLatin1(kBinaryMime),
                  QByteArray(reinterpret_cast<const char*>(payload->binary.data()),
                             static_cast<qsizetype>(payload->binary.size())));
    mime->setData(QString::fromLatin1(kTextMime),
                  QByteArray(payload->text.data(), static_cast<qsizetype>(payload->text.size())));
    clipboard->clear();
    clipboard->setMimeData(mime);
    return true;
}

bool HexClipboard::Cut(HexEditor& editor) {
    if (editor.IsReadOnly() || !editor.HasSelection())
        return false;
    Copy(editor);
    return Clear(editor);
}

bool HexClipboard::Clear(HexEditor& editor) {
    if (editor.IsReadOnly() || !editor.HasSelection())
        return false;
    return editor.DeleteRange(editor.SelectionLow(), editor.SelectionHigh());
}

bool HexClipboard::Paste(HexEditor& editor) {
    if (editor.IsReadOnly())
        return false;
    auto block = PasteBlock();
    if (!block)
        return false;
    return editor.Paste(*block);
}

bool HexClipboard::HasPasteData() {
    QClipboard* clipboard = SystemClipboard();
    const QMimeData* mime = clipboard ? clipboard->mimeData() : nullptr;
    return mime && (mime->hasFormat(QString::fromLatin1(kBinaryMime)) || mime->hasText());
}

std::optional<std::vector<uint8_t>> HexClipboard::PasteBlock() {
    QClipboard* clipboard = SystemClipboard();
    return PasteBlock(clipboard ? clipboard->mimeData() : nullptr);
}

std::optional<std::vector<uint8_t>> HexClipboard::PasteBlock(const QMimeData* mime) {
    if (!mime)
        return std::nullopt;
    QByteArray bytes;
    if (mime->hasFormat(QString::fromLatin1(kBinaryMime))) {
        bytes = mime->data(QString::fromLatin1(kBinaryMime));
    } else if (mime->hasFormat(QString::fromLatin1(kTextMime))) {
        bytes = mime->data(QString::fromLatin1(kTextMime));
    } else if (mime->hasText()) {
        // Text offered only in another encoding: keep the low byte of each unit.
        const QString text = mime->text();
        bytes.reserve(text.size());
        for (QChar c : text)
            bytes.append(static_cast<char>(c.unicode() & 0xFF));
    } else {
        return std::nullopt;
    }
    return std::vector<uint8_t>(bytes.begin(), bytes.end());
}
