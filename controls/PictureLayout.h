// Where a picture view draws its image: destination and source rectangles, the zoom percent and
// the bars around a picture that keeps its aspect ratio. Plain arithmetic, no painting.
#pragma once

#include <vector>

struct LayoutRectF {
    float x = 0, y = 0, width = 0, height = 0;
};

struct LayoutRect {
    int x = 0, y = 0, width = 0, height = 0;
    bool operator==(const LayoutRect& o) const {
        return x == o.x && y == o.y && width == o.width && height == o.height;
    }
};

struct PictureLayoutInput {
    int left = 0, top = 0, right = 0, bottom = 0; // client rectangle
    int imageWidth = 0, imageHeight = 0;          // 0 x 0 when there is no image
    bool maintainAspect = false;                  // keep the ratio, bars fill the rest
    bool fit = true;                              // fit the whole image (else zoom mode)
    int zoomPercent = 0;                          // scale of zoom mode
    LayoutRectF source;                           // last source rectangle; its origin scrolls zoom mode
};

struct PictureLayoutResult {
    bool clearOnly = false;       // nothing to draw: fill the whole client area with the background
    LayoutRectF destination;      // in client coordinates
    LayoutRectF source;           // in image pixels
    int zoomPercent = 0;          // written by fit mode, kept by the others
    std::vector<LayoutRect> bars; // background bars beside or above and below the image
};

PictureLayoutResult ComputePictureLayout(const PictureLayoutInput& in);
