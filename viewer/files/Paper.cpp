#include "viewer/files/Paper.h"

#include "viewer/drawing/ViewLook.h"
#include "viewer/files/Document.h"
#include <zep/framework/Exception.h>
#include <zep/framework/FileSaving.h>
#include <zep/view/Panel.h>
#include <zep/view/PanelPages.h>

#include <QBuffer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QPrinter>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

constexpr double PageMargin = 10;      // mm
constexpr double LargestPaper = 5000;  // mm
constexpr double LargestScale = 1000;  // to 1
constexpr double SmallestScale = 1e-6; // to 1

QString TitleOf(const TDocument& document) {
    QStringList names;
    for (const TOpenedFile& file : document.Files()) names << QFileInfo(file.Name).fileName();
    return names.join(QStringLiteral(", "));
}

QPageLayout LayoutOf(const QPageSize& page, QPageLayout::Orientation orientation) {
    QPageLayout layout(page, orientation, {}, QPageLayout::Millimeter);
    const double side = layout.fullRect().width();
    const double margin = std::min({PageMargin, side / 20, layout.fullRect().height() / 20});
    layout.setMargins({margin, margin, margin, margin});
    return layout;
}

/// "12", "2.5"; 0 for what is no number above 0.
double Positive(const QString& text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && value > 0 ? value : 0;
}

std::optional<QSizeF> SizeNamed(const QString& text) {
    const QStringList sides = text.toLower().split(QLatin1Char('x'));
    if (sides.size() != 2) return {};
    const QSizeF size(Positive(sides[0]), Positive(sides[1]));
    if (size.isEmpty() || size.width() > LargestPaper || size.height() > LargestPaper) return {};
    return size;
}

} // namespace

QPageSize PageNamed(const QString& text) {
    using enum QPageSize::PageSizeId;
    for (const auto id : {A0, A1, A2, A3, A4, A5, A6, Letter, Legal, Tabloid})
        if (QPageSize::key(id).compare(text, Qt::CaseInsensitive) == 0) return QPageSize(id);
    if (const std::optional<QSizeF> size = SizeNamed(text))
        return QPageSize(*size, QPageSize::Millimeter, text, QPageSize::ExactMatch);
    throw Exception(QStringLiteral("A page is A0 to A6, Letter, Legal, Tabloid, or WIDTHxHEIGHT in "
                                   "millimetres, each above 0 and up to %1, but found \"%2\".")
                        .arg(LargestPaper)
                        .arg(text));
}

std::optional<double> ScaleNamed(const QString& text) {
    if (text.trimmed().compare(QStringLiteral("fit"), Qt::CaseInsensitive) == 0) return {};
    const QStringList sides = text.split(QLatin1Char(':'));
    const double paper = Positive(sides[0]);
    const double real = sides.size() == 2 ? Positive(sides[1]) : 0;
    const double scale = real > 0 ? paper / real : 0;
    if (scale >= SmallestScale && scale <= LargestScale) return scale;
    throw Exception(QStringLiteral("A scale is such as 1:2, 1:1 or 5:1, from %1:1 to 1:%2, or fit, "
                                   "but found \"%3\".")
                        .arg(LargestScale)
                        .arg(1 / SmallestScale, 0, 'f', 0)
                        .arg(text));
}

/// The view is white: what could not be told from that is dark.
class TPaper::TWhite {
public:
    TWhite(TZEPPanel& panel, TDocument& document, bool guides)
        : m_panel(panel), m_document(document), m_background(document.Background()),
          m_fog(panel.Fog()->Color()), m_guides(document.Guides()) {
        document.SetBackground(clWhite);
        document.SetGuides(m_guides && guides);
        panel.Fog()->SetColor(clWhite);
    }
    ~TWhite() {
        m_document.SetBackground(m_background);
        m_document.SetGuides(m_guides);
        m_panel.Fog()->SetColor(m_fog);
    }
    TWhite(const TWhite&) = delete;
    TWhite& operator=(const TWhite&) = delete;

private:
    TZEPPanel& m_panel;
    TDocument& m_document;
    std::optional<TColor> m_background;
    TColor m_fog;
    bool m_guides;
};

TPaper::TPaper(TZEPPanel& panel, TDocument& document, const TPaperWish& wish, int resolution)
    : m_white(std::make_unique<TWhite>(panel, document, wish.Guides)) {
    const TZEPPageOptions options{.Scale = wish.Scale,
                                  .LineWidth = wish.LineWidth / qGuiApp->devicePixelRatio(),
                                  .Resolution = resolution,
                                  .Title = wish.Title ? TitleOf(document) : QString()};
    const auto pages = [&](QPageLayout::Orientation orientation) {
        m_layout = LayoutOf(wish.Page, orientation);
        return std::make_unique<TZEPPages>(panel, m_layout, options);
    };
    const bool wide = panel.Width() > panel.Height();
    const auto first = wide ? QPageLayout::Landscape : QPageLayout::Portrait;
    m_pages = pages(wish.Orientation.value_or(first));
    if (wish.Orientation || m_pages->Count() == 1) return;
    auto turned = pages(wide ? QPageLayout::Portrait : QPageLayout::Landscape);
    if (turned->Count() < m_pages->Count())
        m_pages = std::move(turned);
    else
        m_layout = LayoutOf(wish.Page, first);
}

TPaper::~TPaper() = default;

void Print(TZEPPanel& panel, TDocument& document, const TPaperWish& wish, QPrinter& printer) {
    const TPaper paper(panel, document, wish);
    printer.setPageLayout(paper.Layout());
    printer.setDocName(TitleOf(document));
    paper.Pages().Print(printer);
}

void WritePaper(TZEPPanel& panel, TDocument& document, const TPaperWish& wish,
                const QString& fileName) {
    QBuffer encoded;
    encoded.open(QIODevice::WriteOnly);
    {
        const TPaper paper(panel, document, wish);
        QPdfWriter writer(&encoded);
        writer.setTitle(TitleOf(document));
        writer.setPageLayout(paper.Layout());
        paper.Pages().Print(writer);
    }
    SaveFile(fileName, [&](QIODevice& device) { device.write(encoded.data()); });
}

void WritePaper(TDocument& document, const TViewLook& look, const TPaperWish& wish,
                const QString& fileName) {
    TZEPPanel panel;
    panel.resize(wish.Page.size(QPageSize::Millimeter).transposed().toSize());
    panel.SetCamera(document.Camera());
    TDressedView(
        &panel, [](const auto&) {}, [&] { return document.Backdrop().MiddleColor(); })
        .Dress(look);
    WritePaper(panel, document, wish, fileName);
}

} // namespace ZEP
