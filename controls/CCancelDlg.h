// The modeless "Stop processing" dialog shown while a job runs. "Stop", Escape and closing the
// window all set the stopped flag and cancel the reader's capture queue; none of them closes the
// dialog: only the job runner destroys it.
#pragma once

#include <QDialog>
#include <atomic>
#include <string>

class QLabel;

class CCancelDlg : public QDialog {
    Q_OBJECT
public:
    explicit CCancelDlg(QWidget* parent = nullptr);

    bool IsStopped() const { return m_stopped.load(); }
    // Sets the stopped flag and makes a pending capture call of the reader library return.
    void Stop();
    // Status text (control 1028); callable from any thread.
    void SetStatusText(const std::string& text);
    QString StatusText() const;

public slots:
    void reject() override; // Escape

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::atomic<bool> m_stopped{false};
    QLabel* m_status = nullptr;
};
