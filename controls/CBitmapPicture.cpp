#include "CBitmapPicture.h"

#include "ControlIds.h"
#include "ZyrPixelFormat.h"

#include <QFile>
#include <QFileDialog>
#include <QImageWriter>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPen>
#include <vector>

namespace {

constexpr uint32_t kConversionSlack = 1000;

// Formats a reader image view can point at without copying; anything else is converted once.
std::unique_ptr<QImage> Normalised(QImage image) {
    switch (image.format()) {
    case QImage::Format_Grayscale8:
    case QImage::Format_RGB888:
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
        return std::make_unique<QImage>(std::move(image));
    case QImage::Format_Indexed8:
        if (image.isGrayscale()) {
            return std::make_unique<QImage>(image.convertToFormat(QImage::Format_Grayscale8));
        }
        break;
    default:
        break;
    }
    return std::make_unique<QImage>(
        image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32));
}

} // namespace

CBitmapPicture::CBitmapPicture(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent); // Draw covers every pixel
    // The menu opens on the right button's release. Without this the platform's context-menu
    // event, sent on the press, would go on to the window's own menu.
    setContextMenuPolicy(Qt::PreventContextMenu);
}

CBitmapPicture::~CBitmapPicture() = default;

void CBitmapPicture::ReplaceImage(std::unique_ptr<QImage> image) {
    m_bitmap = std::move(image);
    m_outlines.clear();
}

void CBitmapPicture::SetOutlines(std::vector<Outline> outlines) {
    m_outlines = std::move(outlines);
    update();
}

std::vector<CBitmapPicture::Outline> CBitmapPicture::Outlines() const {
    return m_outlines;
}

void CBitmapPicture::SetShowOutlines(bool on) {
    m_showOutlines = on;
    update();
}

void CBitmapPicture::OnShowOutlines() {
    SetShowOutlines(!m_showOutlines);
}

// Image pixels to the view: the same mapping as the image's own drawing.
void CBitmapPicture::DrawOutlines(QPainter& painter) const {
    const std::vector<Outline> outlines = Outlines();
    if (!m_showOutlines || outlines.empty() || m_source.width <= 0 || m_source.height <= 0) {
        return;
    }
    const double sx = m_destination.width / m_source.width;
    const double sy = m_destination.height / m_source.height;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(QRectF(m_destination.x, m_destination.y, m_destination.width, m_destination.height));
    for (const Outline& outline : outlines) {
        QPolygonF mapped;
        for (const QPointF& corner : outline.corners) {
            mapped << QPointF(m_destination.x + (corner.x() - m_source.x) * sx,
                              m_destination.y + (corner.y() - m_source.y) * sy);
        }
        painter.setPen(QPen(outline.colour, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolygon(mapped);
    }
    painter.restore();
}

void CBitmapPicture::LoadFromMemory(const uint8_t* bytes, uint32_t count) {
    ReplaceImage(nullptr);
    uint32_t size = 0;
    if (ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes, count, nullptr, &size) == ZYR_OK) {
        std::vector<uint8_t> buffer(size_t(size) + kConversionSlack);
        uint32_t written = static_cast<uint32_t>(buffer.size());
        if (ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes, count, buffer.data(), &written) == ZYR_OK &&
            written <= buffer.size()) {
            QImage image;
            if (image.loadFromData(buffer.data(), static_cast<int>(written)) && !image.isNull()) {
                ReplaceImage(Normalised(std::move(image)));
            }
        }
    }
    RequestRepaint();
}

void CBitmapPicture::LoadFromFile(const std::string& path) {
    ReplaceImage(nullptr);
    QFile file(QString::fromLocal8Bit(path.c_str()));
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = file.readAll();
        file.close();
        LoadFromMemory(reinterpret_cast<const uint8_t*>(bytes.constData()), static_cast<uint32_t>(bytes.size()));
    }
    RequestRepaint();
}

void CBitmapPicture::SetImage(const ZyrImage* image) {
    std::unique_ptr<QImage> copy;
    if (image && image->Pixels && image->Width > 0 && image->Height > 0) {
        QImage::Format format = QImage::Format_Invalid;
        switch (image->PixelFormat) {
        case ZYR_PIXEL_GREY8:
            format = QImage::Format_Grayscale8;
            break;
        case ZYR_PIXEL_RGB24:
            format = QImage::Format_RGB888;
            break;
        case ZYR_PIXEL_BGRA32:
            format = QImage::Format_ARGB32;
            break;
        }
        if (format != QImage::Format_Invalid &&
            image->Stride >= image->Width * ZyrPixel_BytesPerPixel(image->PixelFormat)) {
            copy = std::make_unique<QImage>(
                QImage(image->Pixels, image->Width, image->Height, image->Stride, format).copy());
        }
    }
    ReplaceImage(std::move(copy));
    RequestRepaint();
}

void CBitmapPicture::SaveAsPng(const std::string& path) {
    SaveWithMimeType(path, "image/png");
}
void CBitmapPicture::SaveAsBmp(const std::string& path) {
    SaveWithMimeType(path, "image/bmp");
}
void CBitmapPicture::SaveAsJpeg(const std::string& path) {
    SaveWithMimeType(path, "image/jpeg");
}

void CBitmapPicture::SaveWithMimeType(const std::string& path, const char* mimeType) {
    const QList<QByteArray> formats = QImageWriter::imageFormatsForMimeType(mimeType);
    if (formats.isEmpty()) {
        return; // no writer for that type: nothing is saved
    }
    if (!m_bitmap) {
        return;
    }
    QImageWriter writer(QString::fromLocal8Bit(path.c_str()), formats.first());
    writer.write(*m_bitmap); // failures are not reported
}

bool CBitmapPicture::HasImage() const {
    return m_bitmap != nullptr;
}

QImage CBitmapPicture::Image() const {
    return m_bitmap ? *m_bitmap : QImage();
}

void CBitmapPicture::SetMaintainAspect(bool on) {
    m_maintainAspect = on;
    update();
}

bool CBitmapPicture::Draw(QPainter& painter) {
    const QImage image = Image();
    const QRect client = rect();
    PictureLayoutInput in;
    in.left = client.left();
    in.top = client.top();
    in.right = client.left() + client.width();
    in.bottom = client.top() + client.height();
    in.imageWidth = image.width();
    in.imageHeight = image.height();
    in.maintainAspect = m_maintainAspect;
    in.fit = m_fit;
    in.zoomPercent = m_zoomPercent;
    in.source = m_source;
    const PictureLayoutResult out = ComputePictureLayout(in);
    const QColor background = palette().color(QPalette::Button);
    if (out.clearOnly) {
        painter.fillRect(client, background);
        return true;
    }
    m_zoomPercent = out.zoomPercent;
    m_destination = out.destination;
    m_source = out.source;
    for (const LayoutRect& bar : out.bars) {
        painter.fillRect(QRect(bar.x, bar.y, bar.width, bar.height), background);
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(
        QRectF(out.destination.x, out.destination.y, out.destination.width, out.destination.height), image,
        QRectF(out.source.x, out.source.y, out.source.width, out.source.height));
    DrawOutlines(painter);
    return true;
}

void CBitmapPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Draw(painter);
}

CBitmapPicture::SaveFormat CBitmapPicture::SaveFormatFor(const std::string& path) {
    const size_t slash = path.find_last_of("\\/");
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const size_t dot = name.find_last_of('.');
    const QString ext =
        dot == std::string::npos ? QString() : QString::fromLocal8Bit(name.substr(dot + 1).c_str());
    if (ext.compare(QLatin1String("png"), Qt::CaseInsensitive) == 0) {
        return SaveFormat::Png;
    }
    if (ext.compare(QLatin1String("jpg"), Qt::CaseInsensitive) == 0) {
        return SaveFormat::Jpeg;
    }
    return SaveFormat::Bmp;
}

bool CBitmapPicture::BuildContextMenu(QMenu& menu) {
    if (!HasImage()) {
        return false;
    }
    QAction* save = menu.addAction(QStringLiteral("Save Image"));
    save->setData(ID_SAVE_IMAGE);
    connect(save, &QAction::triggered, this, &CBitmapPicture::OnSaveImage);
    QAction* aspect = menu.addAction(QStringLiteral("Maintain Aspect Ratio"));
    aspect->setData(ID_MAINTAIN_ASPECT_RATIO);
    aspect->setCheckable(true);
    aspect->setChecked(m_maintainAspect);
    connect(aspect, &QAction::triggered, this, &CBitmapPicture::OnMaintainAspectRatio);
    QAction* outlines = menu.addAction(QStringLiteral("Show Symbol Outlines"));
    outlines->setCheckable(true);
    outlines->setChecked(m_showOutlines);
    connect(outlines, &QAction::triggered, this, &CBitmapPicture::OnShowOutlines);
    return true;
}

void CBitmapPicture::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::RightButton) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    QMenu menu(this);
    if (BuildContextMenu(menu)) {
        menu.exec(mapToGlobal(event->position().toPoint()));
    }
}

std::string CBitmapPicture::ChooseSavePathWithDialog() {
    QFileDialog dialog(this);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("png"));
    dialog.setNameFilters({QStringLiteral("Portable Network Graphic (*.png)"), QStringLiteral("JPEG (*.jpg)"),
                           QStringLiteral("Windows Bitmap (*.bmp)")});
    // An existing file is replaced without asking.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::string();
    }
    return dialog.selectedFiles().first().toLocal8Bit().toStdString();
}

void CBitmapPicture::OnSaveImage() {
    const std::string path = m_chooseSavePath ? m_chooseSavePath() : ChooseSavePathWithDialog();
    if (path.empty()) {
        return;
    }
    switch (SaveFormatFor(path)) {
    case SaveFormat::Png:
        SaveAsPng(path);
        break;
    case SaveFormat::Jpeg:
        SaveAsJpeg(path);
        break;
    case SaveFormat::Bmp:
        SaveAsBmp(path);
        break;
    }
}

void CBitmapPicture::OnMaintainAspectRatio() {
    SetMaintainAspect(!m_maintainAspect);
}

void CBitmapPicture::RequestRepaint() {
    update();
}

// The meta-object code stays in this object, so that programs using other controls do not pull in
// the reader calls above.
#include "moc_CBitmapPicture.cpp"
