#pragma once

#include <cstdint>
#include <optional>

// Caret modes of the hex view: which column the caret is in and, in the hex column, which nibble.
enum HexCaretMode : int {
    HexModeAddress = 0,   // address column
    HexModeCharacter = 1, // character column
    HexModeHigh = 2,      // hex column, high nibble
    HexModeLow = 3,       // hex column, low nibble
};

inline bool IsHexMode(int mode) {
    return mode == HexModeHigh || mode == HexModeLow;
}

// A point in client pixels.
struct HexPoint {
    int x = 0;
    int y = 0;
    bool operator==(const HexPoint& o) const { return x == o.x && y == o.y; }
};

// Result of a hit test: the byte under the point, the caret mode, and where the caret is drawn
// for that hit (column and row of the cell in pixels).
struct HexHit {
    int32_t position = 0;
    int mode = HexModeHigh;
    HexPoint caretPoint;
};

// Vertical scroll bar figures, in rows.
struct HexScrollInfo {
    bool enabled = false; // more rows than fit: the bar is live
    int32_t lastRow = 0;  // index of the last row holding data (range is 0..lastRow)
    int32_t page = 0;     // rows per page (the visible rows)
    int32_t position = 0; // row shown at the top
};

// Geometry of the hex dump: column positions, bytes per row, visible rows, hit test and caret
// position. Pure arithmetic so it can be checked without a display.
class HexLayout {
public:
    // Which columns are shown and how the row width is chosen.
    struct Options {
        bool showAddress = true;     // address column
        bool showCharacters = true;  // character column
        bool showHex = true;         // hex column
        bool wideAddress = true;     // 8 address digits instead of 4
        bool autoBytesPerRow = true; // derive bytes per row from the client width
        int32_t bytesPerRow = 8;     // used when autoBytesPerRow is off (at least 1)
    };

    HexLayout();

    void SetOptions(const Options& options);
    const Options& GetOptions() const { return m_options; }

    // Cell size measured from the font; values below 1 are taken as 1.
    void SetCellSize(int charWidth, int lineHeight);

    // Recomputes bytes per row, column positions and visible rows for a client area and a
    // buffer length. Negative sizes count as 0.
    void Compute(int clientWidth, int clientHeight, int32_t length);

    int CharWidth() const { return m_charWidth; }
    int LineHeight() const { return m_lineHeight; }
    int ClientWidth() const { return m_clientWidth; }
    int ClientHeight() const { return m_clientHeight; }
    int32_t BytesPerRow() const { return m_bytesPerRow; }
    int32_t VisibleRows() const { return m_visibleRows; }
    bool PartialLastRow() const { return m_partialLastRow; }
    int HexColumnX() const { return m_hexX; }
    int CharColumnX() const { return m_charX; }

    // Client height rounded down to whole lines: rows starting at or below it get no address.
    int WholeLinesHeight() const;

    // Rows needed for the whole buffer (a plain ceiling), and the top offset of the last page.
    int32_t RowCount(int32_t length) const;
    int32_t LastPageTop(int32_t length) const;

    // Byte and caret mode under a client point, or nothing when the point is off the data.
    std::optional<HexHit> HitTest(int x, int y, int32_t top, int32_t length) const;

    // Where the caret is drawn for a byte offset and mode with the given first visible byte.
    HexPoint CaretPoint(int32_t position, int mode, int32_t top) const;

    bool InClient(const HexPoint& p) const;

    HexScrollInfo ScrollInfo(int32_t top, int32_t length) const;

private:
    Options m_options;
    int m_charWidth = 1;
    int m_lineHeight = 1;
    int m_clientWidth = 0;
    int m_clientHeight = 0;
    int32_t m_bytesPerRow = 8;
    int32_t m_visibleRows = 1;
    bool m_partialLastRow = true;
    int m_hexX = 0;
    int m_charX = 0;
};
