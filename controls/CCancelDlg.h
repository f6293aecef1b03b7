// The modeless "Stop processing" dialog shown while a job runs. "Stop", Escape and closing the
// window all ask for the stop (the handler the job's owner set); none of them closes the dialog:
// only the job runner destroys it.
#pragma once

#include <QDialog>
#include <functional>
#include <string>

class QLabel;

class CCancelDlg : public QDialog {
    Q_OBJECT
public:
    explicit CCancelDlg(QWidget* parent = nullptr);

    // What Stop does; nothing until set.
    void SetStopHandler(std::function<void()> handler) { m_onStop = std::move(handler); }
    void Stop();
    // Status text (control 1028); callable from any thread.
    void SetStatusText(const std::string& text);
    QString StatusText() const;

public slots:
    void reject() override; // Escape

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::function<void()> m_onStop;
    QLabel* m_status = nullptr;
};
