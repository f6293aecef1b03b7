#include "CGlyphorDlg.h"

#include "CAAMVADialog.h"
#include "CAboutDlg.h"
#include "CBitmapPicture.h"
#include "CCancelDlg.h"
#include "ControlIds.h"
#include "DialogBuilder.h"
#include "EciText.h"
#include "JobContext.h"
#include "JobWorker.h"
#include "PluginPalette.h"
#include "ResultText.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QThread>
#include <QTreeWidget>
#include <chrono>
#include <future>

#include <optional>

namespace {

// What a results row keeps for drawing its symbols' outlines.
constexpr int kOutlinesRole = Qt::UserRole;
constexpr int kSideRole = Qt::UserRole + 1;
constexpr int kFileRole = Qt::UserRole + 2;

std::vector<CBitmapPicture::Outline> Outlines(const DecodeOutcome& outcome, const PluginCatalogue& plugins) {
    size_t index = 0;
    while (index < plugins.Entries().size() && plugins.Entries()[index].name != outcome.plugin) {
        ++index;
    }
    const QColor colour = QColor::fromRgb(PluginPalette::Colour(index));
    std::vector<CBitmapPicture::Outline> outlines;
    for (const DecodedSymbol& symbol : outcome.symbols) {
        CBitmapPicture::Outline outline{QPolygonF(), colour};
        for (const ZyrPoint& corner : symbol.corners) {
            outline.corners << QPointF(corner.X, corner.Y);
        }
        outlines.push_back(outline);
    }
    return outlines;
}

constexpr int kActionButtons[] = {IDC_CAPTURE_MULTI, IDC_CAPTURE,      IDC_OPEN_IMAGE,  IDC_NEXT,
                                  IDC_PREVIOUS,      IDC_DECODE_IMAGE, IDC_DECODE_MULTI};

// Controls that follow the right edge when the window is resized.
constexpr int kRightColumn[] = {
    IDC_CAPTURE_MULTI, IDC_DARK_OBJECT_DETECT, IDC_CAPTURE,       IDC_OPEN_IMAGE,    IDC_PREVIOUS, IDC_NEXT,
    IDC_DECODE_IMAGE,  IDC_DECODE_MULTI,       IDC_CLEAR_RESULTS, IDC_PLUGINS_LABEL, IDC_PLUGINS};

// Paths and names are in the system's 8-bit encoding (UTF-8 here).
QString Local(const std::string& text) {
    return QString::fromLocal8Bit(text.c_str());
}

// Decoded text is bytes in the character set its ECI names (Shift_JIS, ...), otherwise each byte is
// shown as the character of that code (ISO-8859-1); control codes are spelled out so a row stays
// one legible line.
QString Bytes(const std::string& text, int32_t eci = 0) {
    const std::optional<std::string> utf8 =
        eci == 0 || eci == ZYR_ECI_ISO8859_1 ? std::nullopt : EciText::ToUtf8(text, eci);
    if (utf8) {
        const std::string shown = ResultRowText(*utf8, RowBytes::Utf8);
        return QString::fromUtf8(shown.data(), int(shown.size()));
    }
    const std::string shown = ResultRowText(text, RowBytes::Latin1);
    return QString::fromLatin1(shown.data(), int(shown.size()));
}

// The "AAMVA Data" dialog, without a parent, as the result actions use it.
class AamvaDialogViewer : public AamvaViewer {
public:
    int32_t Parse(const uint8_t* bytes, int32_t length) override { return m_dialog.Parse(bytes, length); }
    void ShowModal() override { m_dialog.exec(); }

private:
    CAAMVADialog m_dialog;
};

} // namespace

CGlyphorDlg::CGlyphorDlg(QWidget* parent)
    : QDialog(parent), m_icon(DialogBuilder::AppIcon()), m_session(*this) {
    BuildControls();
}

CGlyphorDlg::~CGlyphorDlg() {
    m_closing = true;
    m_job.reset(); // stops and joins a job still running: it uses the session
    m_cancelDlg.reset();
}

void CGlyphorDlg::BuildControls() {
    DialogBuilder::Build(*this, MainDialogTemplate(),
                         [](const ControlTemplate& c, QWidget* parent) -> QWidget* {
                             return c.kind == ControlKind::Picture ? new CBitmapPicture(parent) : nullptr;
                         });
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    m_picture = Control<CBitmapPicture>(this, IDC_PICTURE);
    m_side1Picture = Control<CBitmapPicture>(this, IDC_SIDE1_PICTURE);
    m_side2Picture = Control<CBitmapPicture>(this, IDC_SIDE2_PICTURE);
    m_pluginList = Control<QListWidget>(this, IDC_PLUGINS);
    m_resultsList = Control<QTreeWidget>(this, IDC_RESULTS);

    connect(Control<QPushButton>(this, IDC_OPEN_IMAGE), &QPushButton::clicked, this,
            &CGlyphorDlg::OnOpenImage);
    connect(Control<QPushButton>(this, IDC_NEXT), &QPushButton::clicked, this, &CGlyphorDlg::OnNextImage);
    connect(Control<QPushButton>(this, IDC_PREVIOUS), &QPushButton::clicked, this,
            &CGlyphorDlg::OnPreviousImage);
    connect(Control<QPushButton>(this, IDC_DECODE_IMAGE), &QPushButton::clicked, this,
            &CGlyphorDlg::OnDecodeImage);
    connect(Control<QPushButton>(this, IDC_DECODE_MULTI), &QPushButton::clicked, this,
            &CGlyphorDlg::OnDecodeMulti);
    connect(Control<QPushButton>(this, IDC_CAPTURE), &QPushButton::clicked, this, &CGlyphorDlg::OnCapture);
    connect(Control<QPushButton>(this, IDC_CAPTURE_MULTI), &QPushButton::clicked, this,
            &CGlyphorDlg::OnCaptureMulti);
    connect(Control<QPushButton>(this, IDC_CLEAR_RESULTS), &QPushButton::clicked, this,
            &CGlyphorDlg::OnClearResults);
    connect(Control<QCheckBox>(this, IDC_DARK_OBJECT_DETECT), &QCheckBox::clicked, this,
            &CGlyphorDlg::OnDarkObjectDetect);
    connect(m_pluginList, &QListWidget::itemSelectionChanged, this, &CGlyphorDlg::OnPluginSelectionChanged);
    m_resultsList->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_resultsList, &QWidget::customContextMenuRequested, this, &CGlyphorDlg::OnResultsContextMenu);
    connect(m_resultsList, &QTreeWidget::itemSelectionChanged, this, &CGlyphorDlg::OnResultSelectionChanged);

    // There is no system menu to extend here: the About box is on F1 and the window's context menu.
    auto* about = new QAction(QStringLiteral("&About Glyphor..."), this);
    about->setShortcut(QKeySequence::HelpContents);
    connect(about, &QAction::triggered, this, &CGlyphorDlg::OnAbout);
    addAction(about);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

int CGlyphorDlg::exec() {
    OnInitDialog();
    return QDialog::exec();
}

void CGlyphorDlg::OnInitDialog() {
    if (m_initialised) {
        return;
    }
    m_initialised = true;
    setWindowIcon(m_icon);
    m_session.LoadPlugins();
    FillPluginList();

    m_resultsList->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_resultsList->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_resultsList->setHeaderLabels({QStringLiteral("File name"), QStringLiteral("Plugin"),
                                    QStringLiteral("Img Process"), QStringLiteral("Time"),
                                    QStringLiteral("Results")});
    const int w = m_resultsList->width() - 2 * m_resultsList->frameWidth();
    for (int column = 0; column < 4; ++column) {
        m_resultsList->setColumnWidth(column, w / 6);
    }
    m_resultsList->setColumnWidth(4, 4 * w / 6);

    m_session.LoadSettings();
    SyncPluginSelectionToList();
    UpdateButtons();

    m_picture->setVisible(true);
    m_picture->setEnabled(true);
    for (CBitmapPicture* side : {m_side1Picture, m_side2Picture}) {
        side->setVisible(false);
        side->setEnabled(false);
    }
    Control<QCheckBox>(this, IDC_USE_VISIBLE_IMAGE)->setChecked(true);
}

void CGlyphorDlg::FillPluginList() {
    for (const PluginEntry& entry : m_session.plugins.Entries()) {
        auto* item = new QListWidgetItem(Local(entry.name), m_pluginList);
        item->setData(Qt::UserRole, QVariant::fromValue<qulonglong>(entry.handle));
    }
}

void CGlyphorDlg::SyncPluginSelectionToList() {
    const QSignalBlocker block(m_pluginList);
    for (int row = 0; row < m_pluginList->count(); ++row) {
        m_pluginList->item(row)->setSelected(m_session.plugins.IsSelected(static_cast<size_t>(row)));
    }
}

void CGlyphorDlg::OnPluginSelectionChanged() {
    for (int row = 0; row < m_pluginList->count(); ++row) {
        m_session.plugins.SetSelected(static_cast<size_t>(row), m_pluginList->item(row)->isSelected());
    }
}

void CGlyphorDlg::UpdateButtons() {
    QWidget* focused = QApplication::focusWidget();
    const ButtonStates s = m_session.Buttons();
    const bool enabled[] = {s.captureMulti, s.capture,     s.openImage,  s.next,
                            s.previous,     s.decodeImage, s.decodeMulti};
    for (size_t i = 0; i < std::size(kActionButtons); ++i) {
        Control<QPushButton>(this, kActionButtons[i])->setEnabled(enabled[i]);
    }
    if (focused && !QApplication::focusWidget() && focused->isEnabled()) {
        focused->setFocus();
    }
}

void CGlyphorDlg::UpdateStatistics() {
    const DecodeStatistics::Texts texts = m_session.stats.Format();
    Control<QLabel>(this, IDC_IMAGE_COUNT)->setText(Local(texts.imageCount));
    Control<QLabel>(this, IDC_SYMBOLS_COUNT)->setText(Local(texts.symbolsCount));
    Control<QLabel>(this, IDC_AVERAGE_TIME)->setText(Local(texts.averageTime));
    Control<QLabel>(this, IDC_AVERAGE_PROCESS)->setText(Local(texts.averageImageProcessTime));
}

void CGlyphorDlg::UpdateData() {
    m_session.useVisibleImage = Control<QCheckBox>(this, IDC_USE_VISIBLE_IMAGE)->isChecked();
    m_session.crop = Control<QCheckBox>(this, IDC_CROP)->isChecked();
    m_session.darkObjectDetect = Control<QCheckBox>(this, IDC_DARK_OBJECT_DETECT)->isChecked() ? 1 : 0;
}

QStringList CGlyphorDlg::OpenFilters() {
    return {QStringLiteral("Portable Network Graphics (*.png)"), QStringLiteral("Windows Bitmap (*.bmp)"),
            QStringLiteral("JPEG Compliant (*.jpg *.jpeg)"), QStringLiteral("All Files (*)")};
}

bool CGlyphorDlg::ChooseFilesWithDialog(uint32_t& filterIndex, QStringList& paths) {
    QFileDialog dialog(this);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setNameFilters(OpenFilters());
    const QStringList filters = OpenFilters();
    // The index counts from 1; 0 (never chosen) preselects the first filter.
    dialog.selectNameFilter(filters.value(filterIndex > 0 ? int(filterIndex) - 1 : 0, filters.first()));
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    filterIndex = static_cast<uint32_t>(filters.indexOf(dialog.selectedNameFilter()) + 1);
    paths = dialog.selectedFiles();
    return true;
}

void CGlyphorDlg::OnOpenImage() {
    uint32_t filterIndex = m_session.files.FilterIndex();
    QStringList paths;
    const bool accepted =
        m_chooseFiles ? m_chooseFiles(filterIndex, paths) : ChooseFilesWithDialog(filterIndex, paths);
    if (!accepted) {
        return;
    }
    std::vector<std::string> list;
    for (const QString& path : paths) {
        list.push_back(path.toLocal8Bit().toStdString());
    }
    m_session.OpenImages(list, filterIndex);
}

void CGlyphorDlg::OnNextImage() {
    m_session.NextImage();
}

void CGlyphorDlg::OnPreviousImage() {
    m_session.PreviousImage();
}

void CGlyphorDlg::RunJob(std::function<uint32_t(JobContext&)> job) {
    if (m_job) {
        return;
    }
    UpdateData();
    // The job reads its stop flag from the session; the dialog shows its text and asks for the stop.
    m_session.job.Begin();
    m_cancelDlg = std::make_unique<CCancelDlg>(this);
    m_cancelDlg->SetStopHandler([this] { m_session.job.Stop(); });
    m_session.job.SetStatusSink([dialog = m_cancelDlg.get()](const std::string& text) { dialog->SetStatusText(text); });
    if (m_session.files.Count() != 1) {
        m_cancelDlg->show();
    }
    m_session.busy = true;
    UpdateButtons();
    m_job = std::make_unique<JobWorker>([this, job = std::move(job)] { return job(m_session.job); },
                                        [this] { m_session.job.Stop(); });
    connect(m_job.get(), &JobWorker::Finished, this, &CGlyphorDlg::OnJobEnded);
    m_job->Start();
}

void CGlyphorDlg::OnJobEnded() {
    // The signal comes from the worker: it is deleted once the signal has been delivered.
    m_job.release()->deleteLater();
    m_session.job.End();
    m_cancelDlg.reset();
    m_session.busy = false;
    UpdateButtons();
    emit JobFinished();
}

void CGlyphorDlg::OnDecodeImage() {
    RunJob([this](JobContext& job) { return m_session.decode.DecodeImageJob(job); });
}

void CGlyphorDlg::OnDecodeMulti() {
    RunJob([this](JobContext& job) { return m_session.decode.DecodeMultiJob(job); });
}

void CGlyphorDlg::OnCapture() {
    if (!m_capture.CheckImageSettings()) {
        return;
    }
    m_session.files.Clear();
    UpdateButtons();
    RunJob([this](JobContext& job) { return m_capture.CaptureJob(job); });
}

void CGlyphorDlg::OnCaptureMulti() {
    if (!m_capture.CheckImageSettings()) {
        return;
    }
    m_session.files.Clear();
    UpdateButtons();
    RunJob([this](JobContext& job) { return m_capture.CaptureMultiJob(job); });
}

void CGlyphorDlg::OnClearResults() {
    m_resultsList->clear();
    m_session.decode.ClearResults();
    // The average image-process time keeps its text, as designed.
    for (int id : {IDC_IMAGE_COUNT, IDC_SYMBOLS_COUNT, IDC_AVERAGE_TIME}) {
        Control<QLabel>(this, id)->setText(QString::fromLatin1(DecodeStatistics::kClearedText));
    }
}

void CGlyphorDlg::OnDarkObjectDetect() {
    UpdateData();
    m_session.ApplyDarkObjectDetect(m_session.darkObjectDetect);
}

void CGlyphorDlg::OnAbout() {
    CAboutDlg about(this);
    about.exec();
}

void CGlyphorDlg::OnShowNextResult() {
    if (const auto row = m_session.decode.TakeNextRow()) {
        auto* item =
            new QTreeWidgetItem({Local(row->fileName), Local(row->pluginName), Local(row->imageProcess),
                                 Local(row->time), Bytes(row->results, row->resultsEci)});
        item->setData(0, kOutlinesRole, QVariant::fromValue(Outlines(row->outcome, m_session.plugins)));
        item->setData(0, kSideRole, row->outcome.side);
        item->setData(0, kFileRole, QString::fromStdString(row->outcome.file));
        m_resultsList->addTopLevelItem(item);
        // Scrolling lays out the whole list, so rows shown in one burst scroll once, after the last.
        if (!m_scrollPending) {
            m_scrollPending = true;
            QMetaObject::invokeMethod(this, &CGlyphorDlg::ScrollToLastResult, Qt::QueuedConnection);
        }
    }
    UpdateStatistics();
    for (CBitmapPicture* picture : {m_picture, m_side1Picture, m_side2Picture}) {
        picture->update();
    }
}

void CGlyphorDlg::OnResultSelectionChanged() {
    const int row = ResultActions::LastSelectedRow(m_resultsList->topLevelItemCount(), [this](int r) {
        return m_resultsList->topLevelItem(r)->isSelected();
    });
    CBitmapPicture* target = nullptr;
    std::vector<CBitmapPicture::Outline> outlines;
    if (row >= 0) {
        const QTreeWidgetItem* item = m_resultsList->topLevelItem(row);
        const int side = item->data(0, kSideRole).toInt();
        target = side == 0 ? m_picture : side == 1 ? m_side1Picture : m_side2Picture;
        // Only over the image the row was decoded from.
        const std::optional<std::string> current = m_session.files.CurrentPath();
        if (side != 0 || (current && ImageFileList::NamePart(*current) ==
                                         item->data(0, kFileRole).toString().toStdString())) {
            outlines = item->data(0, kOutlinesRole).value<std::vector<CBitmapPicture::Outline>>();
        }
    }
    for (CBitmapPicture* picture : {m_picture, m_side1Picture, m_side2Picture}) {
        picture->SetOutlines(picture == target ? outlines : std::vector<CBitmapPicture::Outline>());
    }
}

void CGlyphorDlg::ScrollToLastResult() {
    m_scrollPending = false;
    if (const int count = m_resultsList->topLevelItemCount()) {
        m_resultsList->scrollToItem(m_resultsList->topLevelItem(count - 1));
    }
}

bool CGlyphorDlg::BuildResultMenu(QMenu& menu, const QPoint& position) {
    if (!m_resultsList->itemAt(position)) {
        return false;
    }
    connect(menu.addAction(QStringLiteral("Parse as AAMVA Data...")), &QAction::triggered, this,
            &CGlyphorDlg::OnParseAsAamva);
    connect(menu.addAction(QStringLiteral("Save Data as Binary...")), &QAction::triggered, this,
            &CGlyphorDlg::OnSaveDataAsBinary);
    return true;
}

void CGlyphorDlg::OnResultsContextMenu(const QPoint& position) {
    QMenu menu(this);
    if (BuildResultMenu(menu, position)) {
        menu.exec(m_resultsList->viewport()->mapToGlobal(position));
    }
}

std::optional<GLD_DecodeData> CGlyphorDlg::SelectedResultData() const {
    const int row = ResultActions::LastSelectedRow(m_resultsList->topLevelItemCount(), [this](int r) {
        return m_resultsList->topLevelItem(r)->isSelected();
    });
    if (row < 0) {
        return std::nullopt;
    }
    return m_session.results.DataAt(row);
}

void CGlyphorDlg::OnSaveDataAsBinary() {
    m_resultActions.SaveDataAsBinary(SelectedResultData());
}

void CGlyphorDlg::OnParseAsAamva() {
    m_resultActions.ParseAsAamva(SelectedResultData());
}

std::string CGlyphorDlg::AskBinarySavePath() {
    QString path;
    if (m_chooseSavePath) {
        path = m_chooseSavePath();
    } else {
        // Asks before replacing an existing file; no extension is added.
        QFileDialog dialog(this);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setNameFilter(QStringLiteral("All Files (*)"));
        if (dialog.exec() == QDialog::Accepted) {
            path = dialog.selectedFiles().value(0);
        }
    }
    return path.toLocal8Bit().toStdString();
}

std::unique_ptr<AamvaViewer> CGlyphorDlg::MakeAamvaViewer() {
    return m_makeAamvaViewer ? m_makeAamvaViewer() : std::make_unique<AamvaDialogViewer>();
}

void CGlyphorDlg::resizeEvent(QResizeEvent* e) {
    QDialog::resizeEvent(e);
    if (isMinimized()) {
        return;
    }
    const int width = e->size().width();
    const int height = e->size().height();
    if (!m_firstSizePending) {
        setUpdatesEnabled(false);
        const int dw = width - m_previousWidth;
        const int dh = height - m_previousHeight;
        const auto move = [this](int id, int dx, int dy, int growX, int growY) {
            if (QWidget* w = DialogBuilder::Find(this, id)) {
                const QRect r = w->geometry();
                w->setGeometry(r.x() + dx, r.y() + dy, r.width() + growX, r.height() + growY);
            }
        };
        move(IDC_PICTURE, 0, 0, dw, dh);
        for (int id = IDC_AVERAGE_TIME_LABEL; id <= IDC_AVERAGE_PROCESS; ++id) {
            move(id, 0, dh, 0, 0);
        }
        for (int id : kRightColumn) {
            move(id, dw, 0, 0, 0);
        }
        move(IDCANCEL, dw, dh, 0, 0);
        move(IDC_RESULTS_LABEL, 0, dh, dw, 0);
        move(IDC_RESULTS, 0, dh, dw, 0);
        // Column "Img Process", not "Results" itself, is the base of the new width: intended.
        m_resultsList->setColumnWidth(4, m_resultsList->columnWidth(2) + dw);
        setUpdatesEnabled(true);
        update();
    }
    m_firstSizePending = false;
    m_previousWidth = width;
    m_previousHeight = height;
}

void CGlyphorDlg::paintEvent(QPaintEvent* e) {
    if (!isMinimized()) {
        QDialog::paintEvent(e);
        return;
    }
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize);
    painter.drawPixmap((width() - size + 1) / 2, (height() - size + 1) / 2, m_icon.pixmap(size, size));
}

void CGlyphorDlg::closeEvent(QCloseEvent* e) {
    if (m_session.busy) {
        // A running job keeps the window; a pending capture call is made to return.
        ZyrReader_CameraCancelQueue();
        e->ignore();
        return;
    }
    m_session.SaveSettings();
    e->accept();
    done(QDialog::Rejected);
}

void CGlyphorDlg::reject() {
    // Escape closes like the window's close button, with the same rules.
    close();
}

CBitmapPicture* CGlyphorDlg::Picture(PictureId picture) const {
    switch (picture) {
    case PictureId::Side1:
        return m_side1Picture;
    case PictureId::Side2:
        return m_side2Picture;
    case PictureId::Main:
        break;
    }
    return m_picture;
}

// Queued calls to one object run on its thread in the order they were made.
void CGlyphorDlg::PostShowNextResult() {
    QMetaObject::invokeMethod(this, [this] { OnShowNextResult(); }, Qt::QueuedConnection);
}

void CGlyphorDlg::SetCaption(const std::string& text) {
    const QString caption = Local(text);
    QMetaObject::invokeMethod(
        this, [this, caption] { setWindowTitle(caption); }, Qt::AutoConnection);
}

// Pictures are widgets: jobs reach them through queued calls, in the order they were made.
void CGlyphorDlg::SetPictureImage(PictureId picture, std::shared_ptr<const ZyrImage> image) {
    QMetaObject::invokeMethod(
        this, [this, picture, image] { Picture(picture)->SetImage(image.get()); }, Qt::AutoConnection);
}

void CGlyphorDlg::ShowSideViews(bool sides) {
    QMetaObject::invokeMethod(
        this,
        [this, sides] {
            m_picture->setVisible(!sides);
            m_picture->setEnabled(!sides);
            for (CBitmapPicture* side : {m_side1Picture, m_side2Picture}) {
                side->setVisible(sides);
                side->setEnabled(sides);
            }
        },
        Qt::AutoConnection);
}

void CGlyphorDlg::RedrawAll() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            update();
            repaint();
        },
        Qt::AutoConnection);
}

void CGlyphorDlg::ShowMessage(MessageKind kind, const std::string& text) {
    const QString qtext = Local(text);
    if (QThread::currentThread() == thread()) {
        PresentMessage(kind, qtext);
        return;
    }
    // A job waits until the user has closed the box, or until the window goes away.
    auto closed = std::make_shared<std::promise<void>>();
    std::future<void> answer = closed->get_future();
    QMetaObject::invokeMethod(
        this,
        [this, kind, qtext, closed] {
            PresentMessage(kind, qtext);
            closed->set_value();
        },
        Qt::QueuedConnection);
    while (answer.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready) {
        if (m_closing) {
            return;
        }
    }
}

void CGlyphorDlg::PresentMessage(MessageKind kind, const QString& text) {
    if (m_presentMessage) {
        m_presentMessage(kind, text);
        return;
    }
    const QString appName = QStringLiteral("Glyphor");
    switch (kind) {
    case MessageKind::Plain:
        QMessageBox(QMessageBox::NoIcon, appName, text, QMessageBox::Ok, this).exec();
        break;
    case MessageKind::Exclamation:
        QMessageBox(QMessageBox::Warning, appName, text, QMessageBox::Ok, this).exec();
        break;
    case MessageKind::Error:
        QMessageBox(QMessageBox::Warning, QStringLiteral("Error"), text, QMessageBox::Ok, this).exec();
        break;
    case MessageKind::Info:
        QMessageBox(QMessageBox::Information, QStringLiteral("Info"), text, QMessageBox::Ok, this).exec();
        break;
    }
}
