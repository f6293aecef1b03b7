#include "CGlyphorApp.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Glyphor"));
    CGlyphorApp app;
    app.InitInstance();
    return 0;
}
