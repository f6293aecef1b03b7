// Images encoded in memory, as files on disk would hold them.
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <string>

inline QByteArray Encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

inline QImage Solid(int w, int h, QColor colour) {
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

// A small one-colour PNG file's bytes.
inline std::string PngBytes(QColor colour) {
    return Encoded(Solid(16, 16, colour), "PNG").toStdString();
}
