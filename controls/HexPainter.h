#pragma once

#include "HexEditor.h"

#include <QFont>
#include <QRawFont>
#include <QVector>

#include <array>

class QPainter;
class QPalette;

// Paints the hex dump of the rows in view. Cost depends on the client size only: rows past the
// bottom of the client are never touched, however long the buffer is. Glyphs are placed on the
// character grid of the layout, so columns line up even when the font's advance is fractional.
class HexPainter {
public:
    explicit HexPainter(const QFont& font);

    // Paints background and rows for the editor's current layout; readOnly picks the button-face
    // background.
    void Paint(QPainter& painter, const HexEditor& editor, const QPalette& palette, bool readOnly) const;

private:
    struct Run {
        QVector<quint32> glyphs;
        QVector<QPointF> positions;
        QString chars; // the same characters, for drawing without a raw font
    };

    // Appends the glyph of an ASCII character at a grid column.
    void Add(Run& run, char ch, int column, int charWidth) const;
    void Draw(QPainter& painter, Run& run, int baseline) const;

    QFont m_font;
    QRawFont m_raw;
    std::array<quint32, 128> m_glyph{}; // glyph index per ASCII character
    int m_ascent = 0;
};
