// "AAMVA Data": one parsed AAMVA record, its raw bytes in a hex view and its fields in a grouped
// list, with text and XML export. The dialog owns the parse result until it is destroyed.
#ifndef GLYPHOR_CAAMVA_DIALOG_H
#define GLYPHOR_CAAMVA_DIALOG_H

#include "AAMVAParseResult.h"

#include <QDialog>
#include <QString>

class CHexEdit;
class QTreeWidget;
class QTreeWidgetItem;

class CAAMVADialog : public QDialog {
    Q_OBJECT

public:
    // Control ids of template 132; each control's object name is ControlName(id).
    static constexpr int IDOK = 1;             // "Close"
    static constexpr int IDC_RAW_DATA = 1025;  // hex view, read-only
    static constexpr int IDC_FIELDS = 1026;    // grouped list of the decoded fields
    static constexpr int IDC_SAVE_TEXT = 1027; // "Save as Text..."
    static constexpr int IDC_SAVE_XML = 1028;  // "Save as XML..."
    static QString ControlName(int id);

    // Groups of the list, in their order.
    enum Group { HeaderGroup = 0, ParsedGroup = 1, DataItemsGroup = 2 };

    explicit CAAMVADialog(QWidget* parent = nullptr);
    ~CAAMVADialog() override;

    // Parses the bytes with the reader library (see AAMVAParseResult). Call before showing.
    // Returns 0 or the library's error code.
    int32_t Parse(const uint8_t* bytes, int32_t length);
    const AAMVAParseResult& Result() const { return m_result; }

    // Runs the exports as the buttons do.
    void OnSaveAsText();
    void OnSaveAsXml();

protected:
    void showEvent(QShowEvent* event) override;

    // The path the user chose, empty when cancelled. Filter in the file dialog's own syntax.
    virtual QString AskSavePath(const QString& filter);
    // An error message box (critical icon, OK).
    virtual void ShowError(const QString& text);

private:
    void InitDialog();
    void FillDialog();
    void AddRow(Group group, const QString& name, const QString& id, const QString& value,
                const QString& extra);

    CHexEdit* m_hexEdit = nullptr;
    AAMVAParseResult m_result;
    QTreeWidget* m_list = nullptr;
    QTreeWidgetItem* m_groups[3] = {nullptr, nullptr, nullptr};
    bool m_initialised = false;
};

#endif
