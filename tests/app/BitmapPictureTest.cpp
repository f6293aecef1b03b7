// The picture view: refused reader images, painting, outlines, saving by extension.
#include "CBitmapPicture.h"
#include "EncodedImages.h"
#include "OffscreenMain.h"
#include "TempFolder.h"

#include <QDir>
#include <filesystem>

namespace {

ZyrImage ViewOf(const QImage& image) {
    return ZyrImage{image.width(), image.height(), int32_t(image.bytesPerLine()), ZYR_PIXEL_BGRA32,
                    const_cast<uint8_t*>(image.constBits())};
}

} // namespace

class BitmapPictureTest : public QObject {
    Q_OBJECT
private slots:
    void badReaderImagesEmptyTheView() {
        std::vector<uint8_t> pixels(64, 1);
        const QImage red = Solid(2, 2, Qt::red);
        ZyrImage good = ViewOf(red);
        // zero width, short stride, unknown format
        for (ZyrImage bad : {ZyrImage{0, 2, 4, ZYR_PIXEL_GREY8, pixels.data()}, ZyrImage{4, 2, 3, ZYR_PIXEL_GREY8, pixels.data()},
                             ZyrImage{2, 2, 8, 2, pixels.data()}}) {
            CBitmapPicture view;
            view.SetImage(&good);
            QVERIFY(view.HasImage());
            view.SetImage(&bad);
            QVERIFY(!view.HasImage());
        }
    }

    void paintsTheFaceThenStretchedOrWithBarsAndOutlinesOnlyWhenShown() {
        CBitmapPicture view;
        view.resize(100, 100);
        const QRgb face = view.palette().color(QPalette::Button).rgb(), red = qRgb(255, 0, 0);
        const auto at = [&](int x, int y) { return view.grab().toImage().pixel(x, y); };
        const QImage wide = Solid(200, 100, Qt::red);
        ZyrImage image = ViewOf(wide);
        view.SetImage(&image);
        QCOMPARE(at(50, 2), red); // stretched over the whole area
        view.SetMaintainAspect(true); // 200x100 shown at 100x50 from y 25, bars above and below
        QVERIFY(at(50, 2) == face && at(50, 97) == face && at(50, 50) == red);
        // A square from (40,20) to (160,80) in image pixels: (20,35) to (80,65) on screen.
        const QPolygonF square({QPointF(40, 20), QPointF(160, 20), QPointF(160, 80), QPointF(40, 80)});
        view.SetOutlines({{square, QColor(Qt::blue)}});
        const auto blueAt = [&](int x, int y) { return QColor(at(x, y)).blue() > 150 && QColor(at(x, y)).red() < 150; };
        QVERIFY(!view.ShowOutlines());
        QVERIFY(!blueAt(50, 35)); // off by default: the picture as it was
        view.SetShowOutlines(true);
        QVERIFY(blueAt(50, 35) && blueAt(80, 50));
        QVERIFY(!blueAt(50, 50)); // outlines, not filled
        view.SetImage(&image);    // another image drops them
        QVERIFY(view.Outlines().empty());
        QVERIFY(!blueAt(50, 35));
    }

    // Saved in the format of the last extension, PNG or JPG, else BMP, over an old file; a cancelled
    // save writes nothing, not even a stray relative file.
    void saveImageWritesTheFormatOfTheExtensionOrNothing() {
        TempFolder folder;
        std::filesystem::create_directory(folder.file("d.png"));
        const QImage yellow = Solid(6, 6, Qt::yellow);
        ZyrImage image = ViewOf(yellow);
        CBitmapPicture view;
        view.SetImage(&image);
        const std::pair<const char*, std::string> names[] = {{"s.PNG", "\x89PNG"}, {"s.JPG", "\xFF\xD8\xFF"},
                                                             {"s.jpeg", "BM"}, {"s", "BM"}, {"d.png/s", "BM"}};
        for (const auto& [name, magic] : names) {
            const std::string path = folder.write(name, "old content that is longer than any magic");
            view.SetSavePathChooser([path] { return path; });
            view.OnSaveImage();
            QVERIFY2(readFile(path).rfind(magic, 0) == 0, name);
            QCOMPARE(QImage(QString::fromStdString(path)).size(), QSize(6, 6));
        }
        TempFolder empty;
        const QString previous = QDir::currentPath();
        QDir::setCurrent(QString::fromStdString(empty.path())); // where a stray relative save would land
        view.SetSavePathChooser([] { return std::string(); });
        view.OnSaveImage();
        QDir::setCurrent(previous);
        QVERIFY(QDir(QString::fromStdString(empty.path()))
                    .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));
        QVERIFY(view.HasImage());
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(BitmapPictureTest)
#include "BitmapPictureTest.moc"
