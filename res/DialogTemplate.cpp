#include "DialogTemplate.h"

#include "ControlIds.h"

const DialogTemplate& AboutDialogTemplate() {
    static const DialogTemplate t{
        IDD_ABOUTBOX,
        "About Glyphor",
        170,
        62,
        false,
        {
            {IDC_ABOUT_ICON, ControlKind::Icon, "", 11, 14, 20, 20, true},
            {IDC_ABOUT_TEXT, ControlKind::Text, "Glyphor Version 1.0", 40, 14, 119, 8, true},
            {IDOK, ControlKind::DefaultButton, "OK", 113, 41, 50, 14, true},
        }};
    return t;
}

const DialogTemplate& CancelDialogTemplate() {
    static const DialogTemplate t{IDD_CANCEL_DIALOG,
                                  "Stop processing",
                                  186,
                                  58,
                                  false,
                                  {
                                      {IDC_STATUS, ControlKind::CentredText, "", 7, 9, 172, 18, true},
                                      {IDC_STOP, ControlKind::DefaultButton, "Stop", 68, 36, 50, 14, true},
                                  }};
    return t;
}

// Picture on the left, actions and plug-ins on the right, results below, statistics at the bottom.
// The capture check boxes sit above the picture, where a growing window never covers them.
const DialogTemplate& MainDialogTemplate() {
    static const DialogTemplate t{
        IDD_GLYPHOR_DIALOG,
        "Glyphor",
        362,
        278,
        true,
        {
            {IDC_USE_VISIBLE_IMAGE, ControlKind::CheckBox, "Use Visible Img", 7, 4, 84, 10, true},
            {IDC_CROP, ControlKind::CheckBox, "Crop", 94, 4, 40, 10, true},
            {IDC_PICTURE, ControlKind::Picture, "", 7, 17, 238, 148, true},
            {IDC_SIDE1_PICTURE, ControlKind::Picture, "", 7, 17, 117, 148, false},
            {IDC_SIDE2_PICTURE, ControlKind::Picture, "", 128, 17, 117, 148, false},
            {IDC_CAPTURE_MULTI, ControlKind::Button, "Capture Mult&i", 252, 17, 103, 14, true},
            {IDC_CAPTURE, ControlKind::Button, "C&apture ", 252, 34, 103, 14, true},
            {IDC_DARK_OBJECT_DETECT, ControlKind::CheckBox, "Dark object detect", 252, 51, 103, 10, true},
            {IDC_OPEN_IMAGE, ControlKind::Button, "&Open Image", 252, 64, 103, 14, true},
            {IDC_PREVIOUS, ControlKind::Button, "&<-", 252, 81, 50, 14, true},
            {IDC_NEXT, ControlKind::Button, "-&>", 305, 81, 50, 14, true},
            {IDC_DECODE_IMAGE, ControlKind::Button, "&Decode Image", 252, 98, 103, 14, true},
            {IDC_DECODE_MULTI, ControlKind::Button, "Decode &Multi", 252, 115, 103, 14, true},
            {IDC_CLEAR_RESULTS, ControlKind::Button, "&Clear Results", 252, 132, 103, 14, true},
            {IDC_PLUGINS_LABEL, ControlKind::Text, "&Plugins:", 252, 156, 103, 8, true},
            {IDC_PLUGINS, ControlKind::ListBox, "", 252, 166, 103, 85, true},
            {IDC_RESULTS_LABEL, ControlKind::Text, "Results:", 7, 168, 60, 8, true},
            {IDC_RESULTS, ControlKind::ListView, "", 7, 178, 238, 73, true},
            {IDC_AVERAGE_TIME_LABEL, ControlKind::Text, "Average Time:", 7, 256, 64, 8, true},
            {IDC_AVERAGE_TIME, ControlKind::Text, "-", 72, 256, 48, 8, true},
            {IDC_IMAGE_COUNT_LABEL, ControlKind::Text, "Image Count:", 124, 256, 58, 8, true},
            {IDC_IMAGE_COUNT, ControlKind::Text, "-", 183, 256, 48, 8, true},
            {IDC_SYMBOLS_COUNT_LABEL, ControlKind::Text, "Symbols Count:", 7, 266, 64, 8, true},
            {IDC_SYMBOLS_COUNT, ControlKind::Text, "-", 72, 266, 48, 8, true},
            {IDC_AVERAGE_PROCESS_LABEL, ControlKind::Text, "Average Image Process Time:", 124, 266, 130, 8,
             true},
            {IDC_AVERAGE_PROCESS, ControlKind::Text, "-", 256, 266, 48, 8, true},
        }};
    return t;
}
