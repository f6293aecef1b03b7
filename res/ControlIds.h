// Identifiers of the dialog templates, their controls, commands and private messages.
#pragma once

// Dialog templates and resources.
constexpr int IDD_ABOUTBOX = 100;
constexpr int IDS_ABOUTBOX = 101;  // "&About Glyphor..."
constexpr int IDR_MAINFRAME = 128; // application icon
constexpr int IDD_CANCEL_DIALOG = 130;
constexpr int IDD_GLYPHOR_DIALOG = 131;
constexpr int IDM_ABOUTBOX = 16; // About command

// Standard buttons.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;

// Main window (template 131).
constexpr int IDC_CAPTURE = 1001;
constexpr int IDC_CAPTURE_MULTI = 1002;
constexpr int IDC_PICTURE = 1003;
constexpr int IDC_OPEN_IMAGE = 1004;
constexpr int IDC_SIDE1_PICTURE = 1005;
constexpr int IDC_PLUGINS = 1006;
constexpr int IDC_SIDE2_PICTURE = 1007;
constexpr int IDC_RESULTS = 1008;
constexpr int IDC_PLUGINS_LABEL = 1009;
constexpr int IDC_RESULTS_LABEL = 1010;
constexpr int IDC_PREVIOUS = 1013;
constexpr int IDC_NEXT = 1014;
constexpr int IDC_DECODE_IMAGE = 1015;
constexpr int IDC_DECODE_MULTI = 1016;
constexpr int IDC_CLEAR_RESULTS = 1017;
constexpr int IDC_AVERAGE_TIME_LABEL = 1018;
constexpr int IDC_AVERAGE_TIME = 1019;
constexpr int IDC_IMAGE_COUNT_LABEL = 1020;
constexpr int IDC_IMAGE_COUNT = 1021;
constexpr int IDC_SYMBOLS_COUNT_LABEL = 1022;
constexpr int IDC_SYMBOLS_COUNT = 1023;
constexpr int IDC_AVERAGE_PROCESS_LABEL = 1024;
constexpr int IDC_AVERAGE_PROCESS = 1025;
constexpr int IDC_DARK_OBJECT_DETECT = 1029;
constexpr int IDC_USE_VISIBLE_IMAGE = 1031;
constexpr int IDC_CROP = 1033;

// Stop-processing dialog (template 130).
constexpr int IDC_STOP = 1027;
constexpr int IDC_STATUS = 1028;

// About box (template 100).
constexpr int IDC_ABOUT_ICON = 1040;
constexpr int IDC_ABOUT_TEXT = 1041;

// Menu commands.
constexpr int ID_SAVE_DATA_AS_BINARY = 32769;
constexpr int ID_PARSE_AS_AAMVA = 32770;
constexpr int ID_SAVE_IMAGE = 36608;
constexpr int ID_MAINTAIN_ASPECT_RATIO = 36609;
