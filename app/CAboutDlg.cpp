#include "CAboutDlg.h"

#include "ControlIds.h"
#include "DialogBuilder.h"

#include <QPushButton>

CAboutDlg::CAboutDlg(QWidget* parent) : QDialog(parent) {
    DialogBuilder::Build(*this, AboutDialogTemplate());
    connect(Control<QPushButton>(this, IDOK), &QPushButton::clicked, this, &QDialog::accept);
}
