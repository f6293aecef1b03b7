// The main window: picture views, plug-in list, results list, statistics line and action
// buttons. It owns the test session, turns user events into session calls, and is the session's
// way to the user (SessionView). Widgets are touched on the user-interface thread only; calls
// from a job's worker are carried there.
#pragma once

#include "CaptureCycle.h"
#include "ResultActions.h"
#include "SessionView.h"
#include "TestSession.h"

#include <QDialog>
#include <QIcon>
#include <QStringList>
#include <atomic>
#include <functional>
#include <memory>

class CBitmapPicture;
class CCancelDlg;
class JobWorker;
class JobContext;
class QCheckBox;
class QLabel;
class QListWidget;
class QMenu;
class QPushButton;
class QTreeWidget;

class CGlyphorDlg : public QDialog, public SessionView, public ResultActionUi {
    Q_OBJECT
public:
    using GLD_DecodeResult = ::GLD_DecodeResult;
    using GLD_DecodeData = ::GLD_DecodeData;

    // Shows a message box: kind and text. Tests replace it with a recorder.
    using MessagePresenter = std::function<void(MessageKind kind, const QString& text)>;
    // Runs the open-file dialog with the stored filter (1-based, 0 = first); on OK fills the
    // chosen paths and filter and returns true.
    using OpenFileChooser = std::function<bool(uint32_t& filterIndex, QStringList& paths)>;
    // Runs the save dialog for a row's data; the chosen path, empty when cancelled.
    using SavePathChooser = std::function<QString()>;
    // Makes the viewer "Parse as AAMVA Data..." shows the record in.
    using AamvaViewerFactory = std::function<std::unique_ptr<AamvaViewer>()>;

    explicit CGlyphorDlg(QWidget* parent = nullptr);
    ~CGlyphorDlg() override;

    void SetScannerConnected(bool connected) { m_session.scannerConnected = connected; }
    TestSession& Session() { return m_session; }
    CaptureCycle& Capture() { return m_capture; }

    // Initialisation before the window is first shown (exec runs it once).
    void OnInitDialog();
    int exec() override;

    void SetMessagePresenter(MessagePresenter presenter) { m_presentMessage = std::move(presenter); }
    void SetOpenFileChooser(OpenFileChooser chooser) { m_chooseFiles = std::move(chooser); }
    void SetSavePathChooser(SavePathChooser chooser) { m_chooseSavePath = std::move(chooser); }
    void SetAamvaViewerFactory(AamvaViewerFactory factory) { m_makeAamvaViewer = std::move(factory); }

    // Handlers, public so that tests can drive them as a click would.
    void OnOpenImage();
    void OnNextImage();
    void OnPreviousImage();
    void OnDecodeImage();
    void OnDecodeMulti();
    void OnCapture();
    void OnCaptureMulti();
    void OnClearResults();
    void OnDarkObjectDetect();
    void OnAbout();
    // Results rows: the context menu at a point of the list's viewport (false and left empty
    // below the last row), its two commands, and the data they act on.
    bool BuildResultMenu(QMenu& menu, const QPoint& position);
    void OnSaveDataAsBinary();
    void OnParseAsAamva();
    std::optional<GLD_DecodeData> SelectedResultData() const;
    void UpdateStatistics();
    // Moves the check boxes' values into the session.
    void UpdateData();
    // Starts a job on a worker under the stop-processing dialog and returns at once; the
    // buttons stay disabled until JobFinished. Ignored while another job runs.
    void RunJob(std::function<uint32_t(JobContext&)> job);
    bool JobRunning() const { return m_job != nullptr; }

    CBitmapPicture* Picture(PictureId picture) const;

    // SessionView
    void PostShowNextResult() override;
    void SetCaption(const std::string& text) override;
    void SetPictureImage(PictureId picture, std::shared_ptr<const ZyrImage> image) override;
    void ShowSideViews(bool sides) override;
    void RedrawAll() override;
    void ShowMessage(MessageKind kind, const std::string& text) override;
    void UpdateButtons() override;

    // ResultActionUi
    std::string AskBinarySavePath() override;
    std::unique_ptr<AamvaViewer> MakeAamvaViewer() override;

    // Open dialog filters, in the order their index counts.
    static QStringList OpenFilters();

signals:
    // A job started by RunJob has ended and the window is idle again.
    void JobFinished();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void reject() override;

private:
    void BuildControls();
    void FillPluginList();
    void SyncPluginSelectionToList();
    void OnPluginSelectionChanged();
    void OnShowNextResult();
    void OnResultsContextMenu(const QPoint& position);
    void OnResultSelectionChanged();
    void ScrollToLastResult();
    void PresentMessage(MessageKind kind, const QString& text);
    void OnJobEnded();
    bool ChooseFilesWithDialog(uint32_t& filterIndex, QStringList& paths);

    QIcon m_icon;
    TestSession m_session;
    CaptureCycle m_capture{m_session};
    ResultActions m_resultActions{*this, *this};
    CBitmapPicture* m_picture = nullptr;
    CBitmapPicture* m_side1Picture = nullptr;
    CBitmapPicture* m_side2Picture = nullptr;
    QListWidget* m_pluginList = nullptr;
    QTreeWidget* m_resultsList = nullptr;
    bool m_firstSizePending = true;
    bool m_scrollPending = false;
    bool m_initialised = false;
    int m_previousWidth = 0;
    int m_previousHeight = 0;
    MessagePresenter m_presentMessage;
    OpenFileChooser m_chooseFiles;
    SavePathChooser m_chooseSavePath;
    AamvaViewerFactory m_makeAamvaViewer;
    // The job under way and its stop dialog; the worker goes first when the window goes.
    std::unique_ptr<CCancelDlg> m_cancelDlg;
    std::unique_ptr<JobWorker> m_job;
    // Set when the window is destroyed with a job running: a job waiting on a message box
    // stops waiting.
    std::atomic<bool> m_closing{false};
};
