#include "DialogBuilder.h"

#include "DialogUnits.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>

namespace {

QWidget* MakeDefault(const ControlTemplate& c, QDialog& dialog) {
    switch (c.kind) {
    case ControlKind::Button:
    case ControlKind::DefaultButton: {
        auto* button = new QPushButton(QString::fromLatin1(c.text), &dialog);
        button->setAutoDefault(false);
        button->setDefault(c.kind == ControlKind::DefaultButton);
        return button;
    }
    case ControlKind::CheckBox:
        return new QCheckBox(QString::fromLatin1(c.text), &dialog);
    case ControlKind::Text:
    case ControlKind::CentredText: {
        auto* label = new QLabel(QString::fromLatin1(c.text), &dialog);
        label->setAlignment((c.kind == ControlKind::CentredText ? Qt::AlignHCenter : Qt::AlignLeft) |
                            Qt::AlignTop);
        label->setWordWrap(c.kind == ControlKind::CentredText);
        return label;
    }
    case ControlKind::Icon: {
        auto* label = new QLabel(&dialog);
        label->setPixmap(DialogBuilder::AppIcon().pixmap(32, 32));
        return label;
    }
    case ControlKind::ListBox: {
        auto* list = new QListWidget(&dialog);
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        return list;
    }
    case ControlKind::ListView: {
        auto* view = new QTreeWidget(&dialog);
        view->setRootIsDecorated(false);
        view->setUniformRowHeights(true); // rows are appended without measuring every row again
        view->header()->setStretchLastSection(false);
        return view;
    }
    case ControlKind::Picture:
        break;
    }
    auto* frame = new QLabel(&dialog);
    frame->setFrameShape(QFrame::StyledPanel);
    return frame;
}

} // namespace

void DialogBuilder::Build(QDialog& dialog, const DialogTemplate& t, const Factory& factory) {
    const DialogUnits units(dialog.font());
    dialog.setWindowTitle(QString::fromLatin1(t.caption));
    dialog.setWindowIcon(AppIcon());
    const QRect client = units.ToPixels(0, 0, t.width, t.height);
    if (t.resizable) {
        dialog.resize(client.size());
    } else {
        dialog.setFixedSize(client.size());
    }
    QWidget* previous = nullptr;
    QLabel* pendingBuddy = nullptr;
    for (const ControlTemplate& c : t.controls) {
        QWidget* widget = factory ? factory(c, &dialog) : nullptr;
        if (!widget) {
            widget = MakeDefault(c, dialog);
        }
        widget->setObjectName(ControlName(c.id));
        widget->setProperty("controlId", c.id);
        widget->setGeometry(units.ToPixels(c.x, c.y, c.width, c.height));
        widget->setVisible(c.visible);
        if (previous) {
            QWidget::setTabOrder(previous, widget);
        }
        previous = widget;
        // A label's mnemonic moves the focus to the control that follows it.
        if (pendingBuddy) {
            pendingBuddy->setBuddy(widget);
            pendingBuddy = nullptr;
        }
        if (auto* label = qobject_cast<QLabel*>(widget); label && QString::fromLatin1(c.text).contains('&')) {
            pendingBuddy = label;
        }
    }
}

QWidget* DialogBuilder::Find(const QWidget* dialog, int id) {
    return dialog ? dialog->findChild<QWidget*>(ControlName(id)) : nullptr;
}

QString DialogBuilder::ControlName(int id) {
    return QStringLiteral("IDC_%1").arg(id);
}

static void InitResources() {
    Q_INIT_RESOURCE(res);
}

QIcon DialogBuilder::AppIcon() {
    static const bool loaded = (InitResources(), true);
    (void)loaded;
    return QIcon(QStringLiteral(":/glyphor/glyphor.png"));
}
