#include "BenchImages.h"

#include <QImage>
#include <QPainter>
#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

std::string BenchText(int index) {
    char text[64];
    std::snprintf(text, sizeof text, "GLYPHOR-BENCH-%03d", index);
    return text;
}

std::vector<std::string> WriteBenchImages(const std::string& folder, int count) {
    std::vector<std::string> paths;
    ZXing::MultiFormatWriter writer(ZXing::BarcodeFormat::QRCode);
    writer.setMargin(4);
    for (int i = 0; i < count; ++i) {
        const ZXing::BitMatrix bits = writer.encode(BenchText(i), 240, 240);
        QImage code(bits.width(), bits.height(), QImage::Format_Grayscale8);
        for (int y = 0; y < bits.height(); ++y) {
            for (int x = 0; x < bits.width(); ++x) {
                code.scanLine(y)[x] = bits.get(x, y) ? 0 : 255;
            }
        }
        // A document-sized page, the code off centre so that the decoder has to look for it.
        QImage page(800, 600, QImage::Format_RGB32);
        page.fill(QColor(235, 232, 225));
        QPainter painter(&page);
        painter.drawImage(120 + (i % 5) * 60, 80 + (i % 3) * 60, code);
        painter.end();
        char name[32];
        std::snprintf(name, sizeof name, "/bench_%03d.png", i);
        paths.push_back(folder + name);
        page.save(QString::fromStdString(paths.back()), "PNG");
    }
    return paths;
}
