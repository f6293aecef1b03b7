// The About box: program name and version, and an OK button.
#pragma once

#include <QDialog>

class CAboutDlg : public QDialog {
    Q_OBJECT
public:
    explicit CAboutDlg(QWidget* parent = nullptr);
};
