// The picture view: loading through the reader's conversion, copies of reader images, painting,
// saving by extension.
#include "CBitmapPicture.h"
#include "EncodedImages.h"
#include "OffscreenMain.h"
#include "ReaderDouble.h"
#include "TempFolder.h"

#include <QDir>
#include <thread>

namespace rd = readerdouble;

namespace {

std::string Magic(const std::string& path) {
    return readFile(path).substr(0, 4);
}

} // namespace

class BitmapPictureTest : public QObject {
    Q_OBJECT
private slots:
    void init() { rd::Reset(); }

    void loadsThroughTheReaderConversionWithSlack() {
        CBitmapPicture view;
        const QByteArray png = Encoded(Solid(8, 6, Qt::red), "PNG");
        view.LoadFromMemory(reinterpret_cast<const uint8_t*>(png.constData()), png.size());
        QVERIFY(view.HasImage());
        QCOMPARE(view.Image().size(), QSize(8, 6));
        const auto calls = rd::CallsNamed("ZyrReader_ImageConvertFormat");
        QCOMPARE(int(calls.size()), 2);
        // Size query first (no buffer, size preset to 0), then the real call with 1000 bytes to spare.
        QCOMPARE(calls[0].args[0], std::string("6"));
        QCOMPARE(calls[0].args[3], std::string("null"));
        QCOMPARE(calls[0].args[4], std::string("0"));
        QCOMPARE(calls[1].args[4], std::to_string(png.size() + 1000));
    }

    void failedConversionLeavesTheViewEmpty_data() {
        QTest::addColumn<int>("failingCall");
        QTest::newRow("size query") << 0;
        QTest::newRow("conversion") << 1;
        QTest::newRow("undecodable bytes") << 2;
    }
    void failedConversionLeavesTheViewEmpty() {
        QFETCH(int, failingCall);
        CBitmapPicture view;
        view.SetImage(nullptr);
        const QByteArray png = Encoded(Solid(4, 4, Qt::blue), "PNG");
        view.LoadFromMemory(reinterpret_cast<const uint8_t*>(png.constData()), png.size());
        QVERIFY(view.HasImage());
        if (failingCall == 0) {
            rd::QueueResult("ZyrReader_ImageConvertFormat", ZYR_ERR_CORRUPT_IMAGE);
        } else if (failingCall == 1) {
            rd::QueueResult("ZyrReader_ImageConvertFormat", ZYR_OK);
            rd::QueueResult("ZyrReader_ImageConvertFormat", ZYR_ERR_UNSUPPORTED_IMAGE);
        } else {
            rd::SetConvertOutput({'n', 'o', 't', ' ', 'a', 'n', ' ', 'i', 'm', 'a', 'g', 'e'});
        }
        view.LoadFromMemory(reinterpret_cast<const uint8_t*>(png.constData()), png.size());
        QVERIFY(!view.HasImage());
    }

    void unreadableFileEmptiesTheView() {
        TempFolder folder;
        const QByteArray bmp = Encoded(Solid(5, 5, Qt::green), "BMP");
        const std::string path = folder.write("a.bmp", bmp.toStdString());
        CBitmapPicture view;
        view.LoadFromFile(path);
        QVERIFY(view.HasImage());
        view.LoadFromFile(folder.file("missing.png"));
        QVERIFY(!view.HasImage());
        view.LoadFromFile(path);
        view.LoadFromFile(folder.path()); // a folder is not a readable image
        QVERIFY(!view.HasImage());
    }

    void readerImagesAreCopied_data() {
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("bytesPerPixel");
        QTest::addColumn<QRgb>("expected");
        QTest::newRow("grey") << int(ZYR_PIXEL_GREY8) << 1 << qRgb(0x40, 0x40, 0x40);
        QTest::newRow("rgb") << int(ZYR_PIXEL_RGB24) << 3 << qRgb(0x40, 0x41, 0x42);
        QTest::newRow("bgra") << int(ZYR_PIXEL_BGRA32) << 4 << qRgba(0x42, 0x41, 0x40, 0x43);
    }
    void readerImagesAreCopied() {
        QFETCH(int, format);
        QFETCH(int, bytesPerPixel);
        QFETCH(QRgb, expected);
        const int width = 3, height = 2, stride = width * bytesPerPixel + 2; // padded rows
        std::vector<uint8_t> pixels(size_t(stride) * height, 0);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width * bytesPerPixel; ++x) {
                pixels[size_t(y * stride + x)] = uint8_t(0x40 + x % bytesPerPixel);
            }
        }
        ZyrImage image{width, height, stride, format, pixels.data()};
        CBitmapPicture view;
        view.SetImage(&image);
        std::fill(pixels.begin(), pixels.end(), 0); // the caller's image is not the view's
        QCOMPARE(view.Image().size(), QSize(width, height));
        QCOMPARE(view.Image().pixel(2, 1), expected);
    }

    void badReaderImagesEmptyTheView_data() {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("stride");
        QTest::addColumn<int>("format");
        QTest::newRow("zero width") << 0 << 2 << 4 << int(ZYR_PIXEL_GREY8);
        QTest::newRow("short stride") << 4 << 2 << 3 << int(ZYR_PIXEL_GREY8);
        QTest::newRow("unknown format") << 2 << 2 << 8 << 2;
    }
    void badReaderImagesEmptyTheView() {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, stride);
        QFETCH(int, format);
        std::vector<uint8_t> pixels(64, 1);
        ZyrImage image{width, height, stride, format, pixels.data()};
        CBitmapPicture view;
        const QImage red = Solid(2, 2, Qt::red);
        ZyrImage good{2, 2, int32_t(red.bytesPerLine()), ZYR_PIXEL_BGRA32,
                      const_cast<uint8_t*>(red.constBits())};
        view.SetImage(&good);
        QVERIFY(view.HasImage());
        view.SetImage(&image);
        QVERIFY(!view.HasImage());
    }

    void emptyViewIsClearedToTheButtonFace() {
        CBitmapPicture view;
        view.resize(40, 30);
        const QImage shot = view.grab().toImage();
        const QRgb face = view.palette().color(QPalette::Button).rgb();
        for (const QPoint p : {QPoint(0, 0), QPoint(39, 29), QPoint(20, 15)}) {
            QCOMPARE(shot.pixel(p), face);
        }
    }

    void paintsStretchedOrWithBars() {
        CBitmapPicture view;
        view.resize(100, 100);
        const QImage wide = Solid(200, 100, Qt::red);
        ZyrImage image{200, 100, int32_t(wide.bytesPerLine()), ZYR_PIXEL_BGRA32,
                       const_cast<uint8_t*>(wide.constBits())};
        view.SetImage(&image);
        const QRgb face = view.palette().color(QPalette::Button).rgb();

        QImage shot = view.grab().toImage();
        QCOMPARE(shot.pixel(50, 2), qRgb(255, 0, 0)); // stretched over the whole area

        view.SetMaintainAspect(true);
        shot = view.grab().toImage();
        QCOMPARE(shot.pixel(50, 2), face);  // bar above
        QCOMPARE(shot.pixel(50, 97), face); // bar below
        QCOMPARE(shot.pixel(50, 50), qRgb(255, 0, 0));
        QCOMPARE(view.DestinationRect().y, 25.0f);
        QCOMPARE(view.ZoomPercent(), 25); // height over width, as designed
    }

    void outlinesFollowTheImageLayoutOnlyWhenShown() {
        CBitmapPicture view;
        view.resize(100, 100);
        const QImage wide = Solid(200, 100, Qt::white);
        ZyrImage image{200, 100, int32_t(wide.bytesPerLine()), ZYR_PIXEL_BGRA32,
                       const_cast<uint8_t*>(wide.constBits())};
        view.SetImage(&image);
        view.SetMaintainAspect(true); // 200x100 shown at 100x50 from y 25
        // A square from (40,20) to (160,80) in image pixels: (20,35) to (80,65) on screen.
        const QPolygonF square({QPointF(40, 20), QPointF(160, 20), QPointF(160, 80), QPointF(40, 80)});
        view.SetOutlines({{square, QColor(Qt::blue)}});
        const auto blueAt = [&](int x, int y) {
            const QColor c = view.grab().toImage().pixelColor(x, y);
            return c.blue() > 150 && c.red() < 150;
        };
        QVERIFY(!view.ShowOutlines());
        QVERIFY(!blueAt(50, 35)); // off by default: the picture as it was
        view.SetShowOutlines(true);
        QVERIFY(blueAt(50, 35));
        QVERIFY(blueAt(80, 50));
        QVERIFY(!blueAt(50, 50)); // outlines, not filled
        view.SetImage(&image);    // another image drops them
        QVERIFY(view.Outlines().empty());
        QVERIFY(!blueAt(50, 35));
    }

    void saveFormatFollowsTheExtension_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("format");
        using F = CBitmapPicture::SaveFormat;
        QTest::newRow("png") << "a.png" << int(F::Png);
        QTest::newRow("PNG") << "/x/a.PNG" << int(F::Png);
        QTest::newRow("jpg") << "a.jpg" << int(F::Jpeg);
        QTest::newRow("Jpg") << "a.Jpg" << int(F::Jpeg);
        QTest::newRow("jpeg is bmp") << "a.jpeg" << int(F::Bmp);
        QTest::newRow("no extension") << "/x.png/a" << int(F::Bmp);
        QTest::newRow("bmp") << "a.bmp" << int(F::Bmp);
        QTest::newRow("trailing dot") << "a." << int(F::Bmp);
        QTest::newRow("double") << "a.png.jpg" << int(F::Jpeg);
    }
    void saveFormatFollowsTheExtension() {
        QFETCH(QString, path);
        QFETCH(int, format);
        QCOMPARE(int(CBitmapPicture::SaveFormatFor(path.toStdString())), format);
    }

    void saveImageWritesTheChosenFormatAndReplacesFiles_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("magic");
        QTest::newRow("png") << "s.png" << QByteArray("\x89PNG");
        QTest::newRow("JPG") << "s.JPG" << QByteArray("\xFF\xD8\xFF");
        QTest::newRow("jpeg as bmp") << "s.jpeg" << QByteArray("BM");
        QTest::newRow("none as bmp") << "s" << QByteArray("BM");
    }
    void saveImageWritesTheChosenFormatAndReplacesFiles() {
        QFETCH(QString, name);
        QFETCH(QByteArray, magic);
        TempFolder folder;
        const std::string path =
            folder.write(name.toStdString(), "old content that is longer than any magic");
        CBitmapPicture view;
        const QByteArray png = Encoded(Solid(6, 6, Qt::yellow), "PNG");
        view.LoadFromMemory(reinterpret_cast<const uint8_t*>(png.constData()), png.size());
        view.SetSavePathChooser([path] { return path; });
        view.OnSaveImage();
        QVERIFY(Magic(path).rfind(magic.toStdString(), 0) == 0);
        QImage back(QString::fromStdString(path));
        QCOMPARE(back.size(), QSize(6, 6));
    }

    void cancelledSaveWritesNothing() {
        TempFolder folder;
        const QString previous = QDir::currentPath();
        QDir::setCurrent(QString::fromStdString(folder.path())); // where a stray relative save would land
        CBitmapPicture view;
        view.SetSavePathChooser([] { return std::string(); });
        const QByteArray png = Encoded(Solid(2, 2, Qt::red), "PNG");
        view.LoadFromMemory(reinterpret_cast<const uint8_t*>(png.constData()), png.size());
        view.OnSaveImage();
        QDir::setCurrent(previous);
        QVERIFY(QDir(QString::fromStdString(folder.path()))
                    .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));
        QVERIFY(view.HasImage());
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(BitmapPictureTest)
#include "BitmapPictureTest.moc"
