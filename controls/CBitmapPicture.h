// Picture view: holds one image, draws it stretched or with its aspect ratio kept, and offers a
// context menu to save it, to switch the aspect ratio or to show symbol outlines given to it. Images are
// loaded from encoded bytes (through the reader library's conversion), from files, or copied from a reader
// image. User-interface thread only: jobs reach it through queued calls of the window.
#pragma once

#include "PictureLayout.h"
#include "ZyrReaderLowLevelAPI.h"

#include <QColor>
#include <QImage>
#include <QPolygonF>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QMenu;

class CBitmapPicture : public QWidget {
    Q_OBJECT
public:
    enum class SaveFormat { Png, Jpeg, Bmp };

    // A found symbol's corners in image pixels, in the colour of the plug-in that found it.
    struct Outline {
        QPolygonF corners;
        QColor colour;
    };

    explicit CBitmapPicture(QWidget* parent = nullptr);
    ~CBitmapPicture() override;

    // Replaces the image with the one encoded in bytes; the view is empty when that fails.
    void LoadFromMemory(const uint8_t* bytes, uint32_t count);
    // Reads the whole file and loads it; an unreadable file leaves the view empty.
    void LoadFromFile(const std::string& path);
    // Stores a copy of a reader image (null empties the view); the caller keeps its image.
    void SetImage(const ZyrImage* image);

    void SaveAsPng(const std::string& path);
    void SaveAsBmp(const std::string& path);
    void SaveAsJpeg(const std::string& path);

    // Paints the view; true when it painted (always).
    virtual bool Draw(QPainter& painter);

    bool HasImage() const;
    QImage Image() const; // a shared copy of the current image (null image when empty)

    bool MaintainAspect() const { return m_maintainAspect; }
    void SetMaintainAspect(bool on);
    bool Fit() const { return m_fit; }
    void SetFit(bool on) { m_fit = on; }
    int ZoomPercent() const { return m_zoomPercent; }
    void SetZoomPercent(int percent) { m_zoomPercent = percent; }
    // Outlines drawn over the current image while ShowOutlines is on (off at first); a new image
    // drops them.
    void SetOutlines(std::vector<Outline> outlines);
    std::vector<Outline> Outlines() const;
    bool ShowOutlines() const { return m_showOutlines; }
    void SetShowOutlines(bool on);
    LayoutRectF DestinationRect() const { return m_destination; }
    LayoutRectF SourceRect() const { return m_source; }

    // Format a save dialog's chosen path is written in: "png" and "jpg" by extension (any case),
    // everything else (".jpeg", no extension) as BMP.
    static SaveFormat SaveFormatFor(const std::string& path);

    // Where "Save Image" gets its path; by default a save-file dialog. Replaced by tests.
    void SetSavePathChooser(std::function<std::string()> chooser) { m_chooseSavePath = std::move(chooser); }

    void OnSaveImage();
    void OnMaintainAspectRatio();
    void OnShowOutlines();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    // Fills the context menu; false (and no menu) when the view holds no image.
    bool BuildContextMenu(QMenu& menu);
    void SaveWithMimeType(const std::string& path, const char* mimeType);
    void ReplaceImage(std::unique_ptr<QImage> image);
    void RequestRepaint();
    void DrawOutlines(QPainter& painter) const;
    std::string ChooseSavePathWithDialog();

    bool m_maintainAspect = false;
    int m_zoomPercent = 0;
    bool m_fit = true;
    bool m_showOutlines = false;
    std::vector<Outline> m_outlines;
    std::unique_ptr<QImage> m_bitmap;
    LayoutRectF m_destination;
    LayoutRectF m_source;
    std::function<std::string()> m_chooseSavePath;
};
