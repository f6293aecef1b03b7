#pragma once

#include "HexEditor.h"

#include <cstdint>
#include <optional>
#include <vector>

class QMimeData;

// Clipboard commands of the hex view on the system clipboard. Bytes travel in a private binary
// format, with a plain-text form beside it for other programs.
class HexClipboard {
public:
    // MIME type of the binary format (the same registered name on every platform).
    static const char* const kBinaryMime;
    static const char* const kTextMime;

    // Copy puts nothing on the clipboard without a selection.
    static bool Copy(const HexEditor& editor);
    // Copy, then delete the selection; nothing on a read-only control or without a selection.
    static bool Cut(HexEditor& editor);
    // Inserts the clipboard bytes (binary format first, else text); editable controls only.
    static bool Paste(HexEditor& editor);
    // Delete the selection.
    static bool Clear(HexEditor& editor);

    // True when the clipboard holds the binary format or text.
    static bool HasPasteData();
    // The block a paste would insert, or nothing.
    static std::optional<std::vector<uint8_t>> PasteBlock();
    static std::optional<std::vector<uint8_t>> PasteBlock(const QMimeData* mime);
};
