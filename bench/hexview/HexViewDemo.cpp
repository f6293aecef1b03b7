// Shows the hex view editable (selection in the hex column) above the same bytes read-only
// (selection in the character column), so both modes can be looked at side by side.
#include "CHexEdit.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

#include <cstdint>
#include <string>
#include <vector>

namespace {

std::vector<uint8_t> SampleBytes() {
    const std::string text = "@\n\x1e\rANSI 636000090002DL00410278ZV03190008DLDAQT64235789\n"
                             "DCSSAMPLE\nDDEN\nDACMICHAEL\nDDFN\nDADJOHN\nDDGN\nDCUJR\nDCAD\nDCBK\n"
                             "DCDPH\nDBD06062016\nDBB06061986\nDBA12102024\nDBC1\nDAU068 in\n"
                             "DAYBRO\nDAG2300 WEST BROAD STREET\nDAIRICHMOND\nDAJVA\nDAK232690000  \r";
    std::vector<uint8_t> bytes(text.begin(), text.end());
    for (int i = 0; i < 24; ++i)
        bytes.push_back(static_cast<uint8_t>(0xE0 + i * 5));
    return bytes;
}

void SendKey(QWidget* target, Qt::Key key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const std::vector<uint8_t> bytes = SampleBytes();
    const auto length = static_cast<int32_t>(bytes.size());

    QWidget window;
    window.setWindowTitle(QStringLiteral("Hex view"));
    auto* layout = new QVBoxLayout(&window);

    auto* editable = new CHexEdit;
    editable->SetData(bytes.data(), length);
    layout->addWidget(new QLabel(QStringLiteral("Editable, selection in the hex column")));
    layout->addWidget(editable);

    auto* readOnly = new CHexEdit;
    readOnly->SetReadOnly(true);
    readOnly->SetData(bytes.data(), length);
    layout->addWidget(new QLabel(QStringLiteral("Read-only, selection in the character column")));
    layout->addWidget(readOnly);

    window.resize(760, 560);
    window.show();

    editable->SetSelection(21, 45);
    SendKey(readOnly, Qt::Key_Tab); // caret into the character column
    readOnly->SetSelection(58, 93);
    editable->setFocus();
    return app.exec();
}
