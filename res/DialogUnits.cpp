#include "DialogUnits.h"

#include <QFontMetrics>

namespace {

// units * base / divisor, rounded to the nearest pixel (halves away from zero).
int Scale(int units, int base, int divisor) {
    const long long n = static_cast<long long>(units) * base;
    return static_cast<int>(n >= 0 ? (n + divisor / 2) / divisor : -((-n + divisor / 2) / divisor));
}

} // namespace

DialogUnits::DialogUnits(const QFont& font) {
    const QFontMetrics metrics(font);
    m_baseX = metrics.averageCharWidth();
    m_baseY = metrics.height();
}

DialogUnits::DialogUnits(int averageCharWidth, int charHeight)
    : m_baseX(averageCharWidth), m_baseY(charHeight) {}

int DialogUnits::X(int units) const {
    return Scale(units, m_baseX, 4);
}

int DialogUnits::Y(int units) const {
    return Scale(units, m_baseY, 8);
}

QRect DialogUnits::ToPixels(int x, int y, int width, int height) const {
    // Edges are converted, not sizes, so neighbouring controls keep their shared borders.
    const int left = X(x);
    const int top = Y(y);
    return QRect(left, top, X(x + width) - left, Y(y + height) - top);
}
