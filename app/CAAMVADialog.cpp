#include "CAAMVADialog.h"

#include "AAMVAFields.h"
#include "AAMVATextExport.h"
#include "AAMVAXmlExport.h"
#include "CHexEdit.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>

namespace {

// Template 132 in dialog units.
struct ControlPlace {
    int id;
    const char* text;
    int x, y, width, height;
};
const int kDialogWidth = 520, kDialogHeight = 398;
const ControlPlace kRawDataBox = {-1, "Raw Data", 7, 7, 506, 121};
const ControlPlace kRawData = {CAAMVADialog::IDC_RAW_DATA, "", 7, 18, 506, 105};
const ControlPlace kFieldsBox = {-1, "Decoded Fields", 7, 133, 506, 237};
const ControlPlace kFields = {CAAMVADialog::IDC_FIELDS, "", 7, 146, 506, 218};
const ControlPlace kClose = {CAAMVADialog::IDOK, "Close", 463, 377, 50, 14};
const ControlPlace kSaveText = {CAAMVADialog::IDC_SAVE_TEXT, "Save as Text...", 7, 377, 69, 14};
const ControlPlace kSaveXml = {CAAMVADialog::IDC_SAVE_XML, "Save as XML...", 80, 377, 65, 14};

const char* const kGroupNames[] = {"Header", "Parsed", "All Data Items"};

QString Text(const std::string& s) {
    return QString::fromLatin1(s.data(), static_cast<int>(s.size()));
}

// Paths are handed to the exports as the file system spells them.
std::string PathBytes(const QString& path) {
    const QByteArray bytes = QFile::encodeName(path);
    return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace

CAAMVADialog::CAAMVADialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("AAMVA Data"));
    // Dialog units: a quarter of the font's average character width, an eighth of its height.
    const QFontMetrics metrics(font());
    const int baseX = metrics.averageCharWidth(), baseY = metrics.height();
    auto place = [&](QWidget* widget, const ControlPlace& c) {
        widget->setGeometry(c.x * baseX / 4, c.y * baseY / 8, c.width * baseX / 4, c.height * baseY / 8);
        if (c.id >= 0) {
            widget->setObjectName(ControlName(c.id));
            widget->setProperty("controlId", c.id);
        }
    };
    setFixedSize(kDialogWidth * baseX / 4, kDialogHeight * baseY / 8);

    // The group boxes frame the controls without owning them, so they come first and stay behind.
    place(new QGroupBox(QString::fromLatin1(kRawDataBox.text), this), kRawDataBox);
    place(new QGroupBox(QString::fromLatin1(kFieldsBox.text), this), kFieldsBox);
    m_hexEdit = new CHexEdit(this);
    m_hexEdit->SetReadOnly(true);
    place(m_hexEdit, kRawData);
    m_list = new QTreeWidget(this);
    place(m_list, kFields);

    auto button = [&](const ControlPlace& c) {
        auto* b = new QPushButton(QString::fromLatin1(c.text), this);
        b->setAutoDefault(false);
        place(b, c);
        return b;
    };
    QPushButton* close = button(kClose);
    QPushButton* saveText = button(kSaveText);
    QPushButton* saveXml = button(kSaveXml);
    close->setDefault(true);
    setTabOrder(m_hexEdit, m_list);
    setTabOrder(m_list, close);
    setTabOrder(close, saveText);
    setTabOrder(saveText, saveXml);

    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(saveText, &QPushButton::clicked, this, &CAAMVADialog::OnSaveAsText);
    connect(saveXml, &QPushButton::clicked, this, &CAAMVADialog::OnSaveAsXml);
}

QString CAAMVADialog::ControlName(int id) {
    return QStringLiteral("IDC_%1").arg(id);
}

CAAMVADialog::~CAAMVADialog() = default;

int32_t CAAMVADialog::Parse(const uint8_t* bytes, int32_t length) {
    return m_result.Parse(bytes, length);
}

void CAAMVADialog::showEvent(QShowEvent* event) {
    if (!m_initialised) {
        m_initialised = true;
        InitDialog();
    }
    QDialog::showEvent(event);
}

void CAAMVADialog::InitDialog() {
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setColumnCount(4);
    m_list->setHeaderLabels({"Name", "ID", "Value", "Extra"});
    m_list->header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    // Together the columns are a twelfth wider than the list, so it scrolls sideways.
    const int width = m_list->contentsRect().width();
    m_list->setColumnWidth(0, width / 4);
    m_list->setColumnWidth(1, width / 6);
    m_list->setColumnWidth(2, width / 3);
    m_list->setColumnWidth(3, width / 3);

    m_list->setRootIsDecorated(false);
    m_list->setIndentation(0);
    for (int group = HeaderGroup; group <= DataItemsGroup; ++group) {
        auto* item = new QTreeWidgetItem(m_list, QStringList{QString::fromLatin1(kGroupNames[group])});
        item->setFirstColumnSpanned(true);
        item->setFlags(Qt::ItemIsEnabled);
        QFont bold = item->font(0);
        bold.setBold(true);
        item->setFont(0, bold);
        m_groups[group] = item;
    }
    FillDialog();
    m_list->expandAll();
    m_list->setItemsExpandable(false);
}

void CAAMVADialog::AddRow(Group group, const QString& name, const QString& id, const QString& value,
                          const QString& extra) {
    new QTreeWidgetItem(m_groups[group], QStringList{name, id, value, extra});
}

void CAAMVADialog::FillDialog() {
    m_hexEdit->SetData(m_result.RawData(), m_result.RawLength());
    const AAMVARecord* record = m_result.Record();
    if (record == nullptr)
        return;
    for (const AAMVARow& row : AAMVAFields::Header(*record))
        AddRow(HeaderGroup, Text(row.name), QString(), Text(row.value), Text(row.extra));
    for (const AAMVARow& row : AAMVAFields::Identity(*record))
        AddRow(ParsedGroup, Text(row.name), QString(), Text(row.value), QString());
    for (const AAMVARow& row : AAMVAFields::Physical(*record))
        AddRow(ParsedGroup, Text(row.name), QString(), Text(row.value), QString());
    for (const AAMVARow& row : AAMVAFields::DataItems(*record))
        AddRow(DataItemsGroup, Text(row.name), Text(row.id), Text(row.value), QString());
}

void CAAMVADialog::OnSaveAsText() {
    const QString path = AskSavePath(QStringLiteral("All Files (*)"));
    if (path.isEmpty() || m_result.Record() == nullptr)
        return;
    std::string error;
    if (!AAMVATextExport::Save(*m_result.Record(), m_result.RawData(), m_result.RawLength(), PathBytes(path),
                               &error))
        ShowError(QString::fromLocal8Bit(error.c_str()));
}

void CAAMVADialog::OnSaveAsXml() {
    const QString path = AskSavePath(QStringLiteral("XML Files (*.xml);;All Files (*)"));
    if (path.isEmpty() || m_result.Record() == nullptr)
        return;
    std::string error;
    if (!AAMVAXmlExport::Save(*m_result.Record(), PathBytes(path), &error))
        ShowError(QString::fromLocal8Bit(error.c_str()));
}

QString CAAMVADialog::AskSavePath(const QString& filter) {
    // The file dialog asks before overwriting; no extension is added to a bare name.
    return QFileDialog::getSaveFileName(this, QString(), QString(), filter);
}

void CAAMVADialog::ShowError(const QString& text) {
    QMessageBox::critical(this, QCoreApplication::applicationName(), text);
}
