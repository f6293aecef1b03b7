#include "CCancelDlg.h"

#include "ControlIds.h"
#include "DialogBuilder.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>

CCancelDlg::CCancelDlg(QWidget* parent) : QDialog(parent) {
    DialogBuilder::Build(*this, CancelDialogTemplate());
    m_status = Control<QLabel>(this, IDC_STATUS);
    connect(Control<QPushButton>(this, IDC_STOP), &QPushButton::clicked, this, &CCancelDlg::Stop);
}

void CCancelDlg::Stop() {
    if (m_onStop) {
        m_onStop();
    }
}

void CCancelDlg::SetStatusText(const std::string& text) {
    const QString qtext = QString::fromLocal8Bit(text.c_str());
    QMetaObject::invokeMethod(
        m_status, [label = m_status, qtext] { label->setText(qtext); }, Qt::AutoConnection);
}

QString CCancelDlg::StatusText() const {
    return m_status->text();
}

void CCancelDlg::reject() {
    Stop();
}

void CCancelDlg::closeEvent(QCloseEvent* event) {
    Stop();
    event->ignore();
}

#include "moc_CCancelDlg.cpp"
