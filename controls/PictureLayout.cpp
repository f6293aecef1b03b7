#include "PictureLayout.h"

#include <algorithm>

PictureLayoutResult ComputePictureLayout(const PictureLayoutInput& in) {
    PictureLayoutResult out;
    out.zoomPercent = in.zoomPercent;
    out.source = in.source;
    const int cw = in.right - in.left;
    const int ch = in.bottom - in.top;
    const int W = in.imageWidth;
    const int H = in.imageHeight;
    if (W <= 0 || H <= 0 || cw <= 0 || ch <= 0) {
        out.clearOnly = true;
        return out;
    }
    if (!in.maintainAspect) {
        out.source = {0, 0, float(W), float(H)};
        out.destination = {float(in.left), float(in.top), float(cw), float(ch)};
        return out;
    }
    float dw = 0, dh = 0;
    if (in.fit) {
        const float ratio = float(W) / float(H);
        // Strictly greater: equal ratios take the height branch and get no bars.
        if (ratio > float(cw) / float(ch)) {
            dw = float(cw);
            dh = float(cw) / ratio;
        } else {
            dh = float(ch);
            dw = float(ch) * ratio;
        }
        out.source = {0, 0, float(W), float(H)};
        // Height over width, as designed; only zoom mode reads it.
        out.zoomPercent = int(dh * 100 / float(W));
    } else {
        const int sw = W * in.zoomPercent / 100;
        const int sh = H * in.zoomPercent / 100;
        const int visibleW = sw > cw ? int(float(W) * (float(cw) / float(sw))) : W;
        const int visibleH = sh > ch ? int(float(H) * (float(ch) / float(sh))) : H;
        dw = float(std::min(sw, cw));
        dh = float(std::min(sh, ch));
        float x = in.source.x;
        float y = in.source.y;
        if (x + float(visibleW) > float(W)) {
            x = float(W - visibleW);
        }
        if (y + float(visibleH) > float(H)) {
            y = float(H - visibleH);
        }
        out.source = {x, y, float(visibleW), float(visibleH)};
    }
    const int idw = int(dw);
    const int idh = int(dh);
    const int mx = (cw - idw) / 2;
    const int my = (ch - idh) / 2;
    out.destination = {float(in.left + mx), float(in.top + my), float(idw), float(idh)};
    if (mx > 0) {
        out.bars.push_back({in.left, in.top, mx, ch});
        out.bars.push_back({in.right - mx, in.top, mx, ch});
    }
    if (my > 0) {
        out.bars.push_back({in.left, in.top, cw, my});
        out.bars.push_back({in.left, in.bottom - my, cw, my});
    }
    return out;
}
