#include "HexPainter.h"

#include "HexClipboardFormat.h"

#include <QFontMetrics>
#include <QGlyphRun>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cstdio>

namespace {

const char kDigits[] = "0123456789ABCDEF";

} // namespace

HexPainter::HexPainter(const QFont& font) : m_font(font), m_raw(QRawFont::fromFont(font)) {
    m_ascent = QFontMetrics(font).ascent();
    if (!m_raw.isValid())
        return;
    QString ascii;
    for (int c = 0; c < 128; ++c)
        ascii.append(QChar(c < 0x20 || c == 0x7F ? ' ' : c));
    const QVector<quint32> indexes = m_raw.glyphIndexesForString(ascii);
    for (int c = 0; c < 128 && c < indexes.size(); ++c)
        m_glyph[static_cast<size_t>(c)] = indexes[c];
}

void HexPainter::Add(Run& run, char ch, int column, int charWidth) const {
    if (ch == ' ')
        return;
    run.glyphs.append(m_glyph[static_cast<unsigned char>(ch) & 0x7F]);
    run.positions.append(QPointF(column * charWidth, 0));
    run.chars.append(QChar::fromLatin1(ch));
}

void HexPainter::Draw(QPainter& painter, Run& run, int baseline) const {
    if (run.glyphs.isEmpty())
        return;
    if (m_raw.isValid()) {
        QGlyphRun glyphs;
        glyphs.setRawFont(m_raw);
        glyphs.setGlyphIndexes(run.glyphs);
        glyphs.setPositions(run.positions);
        painter.drawGlyphRun(QPointF(0, baseline), glyphs);
    } else {
        // No raw font on this platform: draw character by character on the grid.
        for (int i = 0; i < run.glyphs.size(); ++i)
            painter.drawText(QPointF(run.positions[i].x(), baseline), QString(run.chars[i]));
    }
    run.glyphs.clear();
    run.positions.clear();
    run.chars.clear();
}

void HexPainter::Paint(QPainter& painter, const HexEditor& editor, const QPalette& palette,
                       bool readOnly) const {
    const HexLayout& layout = editor.Layout();
    const QColor background = palette.color(readOnly ? QPalette::Button : QPalette::Base);
    const QColor text = palette.color(QPalette::WindowText);
    const QColor highlight = palette.color(QPalette::Highlight);
    const QColor highlightText = palette.color(QPalette::HighlightedText);
    painter.fillRect(0, 0, layout.ClientWidth(), layout.ClientHeight(), background);
    if (!editor.HasBuffer())
        return;
    painter.setFont(m_font);

    const HexLayout::Options& options = layout.GetOptions();
    const int cw = layout.CharWidth();
    const int lh = layout.LineHeight();
    const int32_t bpr = layout.BytesPerRow();
    const int32_t length = editor.Length();
    const int hexColumn = layout.HexColumnX() / cw;
    const int charColumn = layout.CharColumnX() / cw;
    const uint8_t* data = editor.Data().data();

    // Selected bytes: the hex column shows them only with the caret in it, likewise the characters.
    int64_t selLow = 0, selHigh = 0;
    if (editor.HasSelection()) {
        selLow = editor.SelectionLow();
        selHigh = editor.SelectionHigh();
    }
    const bool hexSelected = IsHexMode(editor.CaretMode()) && selHigh > selLow;
    const bool charSelected = editor.CaretMode() == HexModeCharacter && selHigh > selLow;

    // Address text if the whole row fits; hex and characters for every row the client shows.
    const int wholeLines = layout.WholeLinesHeight();
    Run plain, selected;
    for (int64_t offset = editor.Top(), y = 0; offset < length && y < layout.ClientHeight();
         offset += bpr, y += lh) {
        const int baseline = static_cast<int>(y) + m_ascent;
        const int64_t rowEnd = std::min<int64_t>(offset + bpr, length);
        if (options.showAddress && y < wholeLines) {
            char address[24];
            std::snprintf(address, sizeof address, options.wideAddress ? "%08lX" : "%04lX",
                          static_cast<unsigned long>(offset));
            for (int i = 0; address[i]; ++i)
                Add(plain, address[i], i, cw);
        }
        // Highlight backgrounds go first, then the glyphs of each colour in one run.
        const int64_t rowSelLow = std::max(offset, selLow);
        const int64_t rowSelHigh = std::min(rowEnd, selHigh);
        if (rowSelHigh > rowSelLow) {
            if (options.showHex && hexSelected)
                painter.fillRect(static_cast<int>(layout.HexColumnX() + 3 * (rowSelLow - offset) * cw),
                                 static_cast<int>(y), static_cast<int>(3 * (rowSelHigh - rowSelLow) * cw), lh,
                                 highlight);
            if (options.showCharacters && charSelected)
                painter.fillRect(static_cast<int>(layout.CharColumnX() + (rowSelLow - offset) * cw),
                                 static_cast<int>(y), static_cast<int>((rowSelHigh - rowSelLow) * cw), lh,
                                 highlight);
        }
        for (int64_t i = offset; i < rowEnd; ++i) {
            const uint8_t b = data[i];
            const int index = static_cast<int>(i - offset);
            const bool inSelection = i >= selLow && i < selHigh;
            if (options.showHex) {
                Run& run = inSelection && hexSelected ? selected : plain;
                Add(run, kDigits[b >> 4], hexColumn + 3 * index, cw);
                Add(run, kDigits[b & 0x0F], hexColumn + 3 * index + 1, cw);
            }
            if (options.showCharacters) {
                Run& run = inSelection && charSelected ? selected : plain;
                Add(run, HexClipboardFormat::IsPrintable(b) ? static_cast<char>(b) : '.', charColumn + index,
                    cw);
            }
        }
        painter.setPen(text);
        Draw(painter, plain, baseline);
        painter.setPen(highlightText);
        Draw(painter, selected, baseline);
    }
}
