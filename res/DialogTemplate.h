// Dialog templates as data: caption, size and controls in dialog units, in tab order.
#pragma once

#include <vector>

enum class ControlKind {
    Button,        // push button
    DefaultButton, // the default push button
    CheckBox,
    Text,        // static text, left-aligned
    CentredText, // static text, centred
    Picture,     // picture frame (a picture view is put there)
    Icon,        // the application icon
    ListBox,     // multi-selection list
    ListView     // report list with columns
};

struct ControlTemplate {
    int id;
    ControlKind kind;
    const char* text;
    int x, y, width, height; // dialog units
    bool visible;
};

struct DialogTemplate {
    int id;
    const char* caption;
    int width, height; // client size in dialog units
    bool resizable;
    std::vector<ControlTemplate> controls;
};

const DialogTemplate& AboutDialogTemplate();  // 100
const DialogTemplate& CancelDialogTemplate(); // 130
const DialogTemplate& MainDialogTemplate();   // 131
