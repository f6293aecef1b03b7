#include "HexContextMenu.h"

#include <QAction>
#include <QMenu>

HexContextMenu::Rules HexContextMenu::Evaluate(bool readOnly, bool hasSelection, bool clipboardHasData) {
    Rules rules;
    rules.clear = !readOnly && hasSelection;
    rules.cut = !readOnly && hasSelection;
    rules.copy = hasSelection;
    rules.paste = !readOnly && clipboardHasData;
    rules.selectAll = true;
    return rules;
}

std::unique_ptr<QMenu> HexContextMenu::Build(QWidget* parent, const Rules& rules, const Commands& commands) {
    auto menu = std::make_unique<QMenu>(parent);
    const struct {
        const char* text;
        bool enabled;
        const std::function<void()>& run;
    } entries[] = {
        {"Clear", rules.clear, commands.clear},
        {"Cut", rules.cut, commands.cut},
        {"Copy", rules.copy, commands.copy},
        {"Paste", rules.paste, commands.paste},
        {"Select All", rules.selectAll, commands.selectAll},
    };
    for (const auto& entry : entries) {
        QAction* action = menu->addAction(QString::fromLatin1(entry.text));
        action->setEnabled(entry.enabled);
        if (entry.run)
            QObject::connect(action, &QAction::triggered, menu.get(), entry.run);
    }
    return menu;
}
