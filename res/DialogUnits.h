// Dialog units to pixels for a dialog font: one horizontal unit is a quarter of the font's
// average character width, one vertical unit an eighth of its height.
#pragma once

#include <QFont>
#include <QRect>

class DialogUnits {
public:
    explicit DialogUnits(const QFont& font);
    DialogUnits(int averageCharWidth, int charHeight);

    int X(int units) const;
    int Y(int units) const;
    QRect ToPixels(int x, int y, int width, int height) const;

private:
    int m_baseX;
    int m_baseY;
};
