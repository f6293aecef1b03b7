// Builds a dialog's controls from its template and finds them again by control id.
#pragma once

#include "DialogTemplate.h"

#include <QDialog>
#include <functional>

class DialogBuilder {
public:
    // Makes the widget for one control; returning null leaves it to the default widget.
    using Factory = std::function<QWidget*(const ControlTemplate&, QWidget* parent)>;

    // Sets caption and size, creates every control at its place, in tab order.
    static void Build(QDialog& dialog, const DialogTemplate& dialogTemplate, const Factory& factory = {});

    // The control with that id (a direct or indirect child), or null.
    static QWidget* Find(const QWidget* dialog, int id);

    // Object name given to the control with that id ("IDC_1003").
    static QString ControlName(int id);

    // The application icon (resource 128).
    static QIcon AppIcon();
};

template <typename T> T* Control(const QWidget* dialog, int id) {
    return qobject_cast<T*>(DialogBuilder::Find(dialog, id));
}
