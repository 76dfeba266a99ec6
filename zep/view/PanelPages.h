#pragma once

#include <zep/Export.h>

#include <QPageLayout>
#include <QSize>
#include <QString>

#include <optional>

class QPagedPaintDevice;
class QPainter;

namespace ZEP {

class TZEPPanel;

/// How a view comes to paper.
struct TZEPPageOptions {
    /// The true scale: how long on paper is what is 1 long. The pages then show all that can be
    /// seen of the scene, in a parallel view from where the camera looks, and are laid side by side
    /// where one is not enough. None: one page with the view as it is, as large as the page takes
    /// it.
    std::optional<double> Scale{};
    /// What 1 of the scene is long, in millimetres.
    double Unit = 1;
    /// Of a line of width 1, in millimetres.
    double LineWidth = 0.25;
    int Resolution = 300; ///< pixels to the inch, 10 to 1200
    /// Of `TZEPPictureOptions`.
    int Samples = 4;
    /// Stands at the foot of each page, with the scale and, of several, the number of the page;
    /// empty: no line there.
    QString Title{};
};

/// The pages that show the view of a panel. Colours are those of the view: a host that wants a
/// white page has the scene white while it prints.
///
///     QPrinter printer(QPrinter::HighResolution);
///     ZEP::TZEPPages(panel, printer.pageLayout(), {.Scale = 0.5, .Title = name}).Print(printer);
class ZEP_EXPORT TZEPPages {
public:
    /// The most pages.
    static constexpr int Most = 400;

    /// Raises `Exception` for a page without room, a scale or width that is no positive number,
    /// and for more than `Most` pages.
    /// \param panel  stays, and shows the same, while the pages are painted
    TZEPPages(TZEPPanel& panel, const QPageLayout& page, const TZEPPageOptions& options);

    [[nodiscard]] int Count() const { return m_columns * m_rows; }
    [[nodiscard]] int Columns() const { return m_columns; }
    [[nodiscard]] int Rows() const { return m_rows; }
    /// "1:2", "5:1"; of a view that is no parallel one, and has no true scale, empty.
    [[nodiscard]] QString ScaleText() const;
    /// \param painter  its origin is the corner of the page's paint rectangle
    /// \param index    of the page, row by row. Raises `Exception` where it cannot be drawn.
    void Paint(QPainter& painter, int index) const;
    /// All pages, on a device of the same page layout. Raises `Exception` where it cannot be drawn
    /// or written.
    void Print(QPagedPaintDevice& device) const;

private:
    void FitView(double width, double height);
    void TileView(double width, double height);
    [[nodiscard]] int Pixels(double millimetres) const;
    [[nodiscard]] double Millimetres(int pixels) const;
    void PaintTitle(QPainter& painter, int index, double dots) const;

    TZEPPanel& m_panel;
    TZEPPageOptions m_options;
    QSize m_page; ///< of the picture on each page, in its pixels
    QSize m_view; ///< of all pages
    int m_columns = 1;
    int m_rows = 1;
    double m_scale = 0; ///< 0: none
    double m_left = 0;  ///< of the picture on the page, millimetres
    double m_top = 0;
    double m_foot = 0; ///< of the room for it
};

} // namespace ZEP
