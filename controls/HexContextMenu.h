#pragma once

#include <functional>
#include <memory>

class QMenu;
class QWidget;

// The hex view's pop-up menu: "Clear", "Cut", "Copy", "Paste", "Select All" in that order, built
// afresh each time it opens.
class HexContextMenu {
public:
    // Which entries are enabled.
    struct Rules {
        bool clear = false;
        bool cut = false;
        bool copy = false;
        bool paste = false;
        bool selectAll = true;
    };

    // Entry positions in the menu.
    enum Entry { EntryClear = 0, EntryCut = 1, EntryCopy = 2, EntryPaste = 3, EntrySelectAll = 4 };

    // Read-only greys the editing entries, no selection greys those that need one, and an
    // editable control greys Paste when the clipboard holds nothing it can take.
    static Rules Evaluate(bool readOnly, bool hasSelection, bool clipboardHasData);

    // Commands run when an entry is chosen.
    struct Commands {
        std::function<void()> clear, cut, copy, paste, selectAll;
    };

    static std::unique_ptr<QMenu> Build(QWidget* parent, const Rules& rules, const Commands& commands);
};
