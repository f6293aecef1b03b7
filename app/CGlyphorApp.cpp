#include "CGlyphorApp.h"

#include "CGlyphorDlg.h"
#include "ReaderSession.h"

#include <QApplication>
#include <QMessageBox>
#include <QThread>

void CGlyphorApp::ShowLibraryMessage(const std::string& text) {
    const QString message = QString::fromLocal8Bit(text.c_str());
    const auto show = [message] {
        QMessageBox(QMessageBox::NoIcon, QStringLiteral("Glyphor"), message, QMessageBox::Ok).exec();
    };
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() == app->thread()) {
        show();
    } else {
        QMetaObject::invokeMethod(app, show, Qt::BlockingQueuedConnection);
    }
}

bool CGlyphorApp::InitInstance() {
    QCoreApplication::setOrganizationName(QStringLiteral("KVE"));
    ReaderSession::SetMessageSink(m_librarySink ? m_librarySink : &CGlyphorApp::ShowLibraryMessage);
    ReaderSession::Startup();
    {
        CGlyphorDlg dialog;
        dialog.SetScannerConnected(ReaderSession::ScannerConnected());
        if (m_runDialog) {
            m_runDialog(dialog);
        } else {
            dialog.exec();
        }
    }
    ReaderSession::Shutdown();
    return false;
}
