// main() for a Qt widget test: offscreen platform unless the environment says otherwise.
#pragma once

#include <QApplication>
#include <QtTest>

#define GLYPHOR_OFFSCREEN_TEST_MAIN(TestClass)                                                               \
    int main(int argc, char** argv) {                                                                        \
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {                                                \
            qputenv("QT_QPA_PLATFORM", "offscreen");                                                         \
        }                                                                                                    \
        QApplication app(argc, argv);                                                                        \
        QApplication::setApplicationName(QStringLiteral("Glyphor"));                                         \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
