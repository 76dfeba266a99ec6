#include <zep/objects/TextShape.h>

#include <zep/gl/Tessellator.h>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <deque>

namespace ZEP {

namespace {

/// Large enough that curves, which are flattened to a quarter of a pixel, look round.
constexpr int OutlinePixels = 200;
/// A bitmap's longest side: what a window can show.
constexpr int MaxBitmapSide = 8192;

using TVertex = std::array<double, 3>;

bool HasFonts() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

QStringList Lines(const QString& text) {
    return text.left(MaxTextLength).split(QLatin1Char('\n'));
}

QPainterPath TextPath(const QString& text, const QFont& font, double spacing) {
    QPainterPath path;
    double y = 0;
    for (const QString& line : Lines(text)) {
        path.addText(0, y, font, line);
        y += spacing;
    }
    return path;
}

double CapHeight(const QFont& font, const QFontMetricsF& metrics) {
    if (metrics.capHeight() > 0) return metrics.capHeight();
    QPainterPath capital;
    capital.addText(0, 0, font, QStringLiteral("H"));
    return std::fmax(capital.boundingRect().height(), 1);
}

// --- tessellation ------------------------------------------------------------------------------

/// What the tessellator's callbacks write to. The combined vertices stay where they are.
struct TTessellation {
    std::vector<TTextPoint>* Triangles;
    std::deque<TVertex> Combined;
};

void TakeVertex(TVertex* vertex, TTessellation* to) {
    to->Triangles->push_back({static_cast<float>((*vertex)[0]), static_cast<float>((*vertex)[1])});
}

void Combine(const GLdouble place[3], void* [4], const GLfloat[4], void** result,
             TTessellation* to) {
    *result = &to->Combined.emplace_back(TVertex{place[0], place[1], place[2]});
}

/// Its presence makes the tessellator send single triangles.
void IgnoreEdge(GLboolean) {}

using TContour = std::vector<TVertex>;

/// Contours that belong together: a letter's outlines with their holes.
struct TGroup {
    std::vector<QRectF> Boxes;
    std::vector<TContour> Contours;

    [[nodiscard]] bool Takes(const QRectF& box) const {
        return std::any_of(Boxes.begin(), Boxes.end(), [&](const QRectF& other) {
            return other.contains(box) || box.contains(other);
        });
    }
    void Add(TGroup&& other) {
        std::move(other.Boxes.begin(), other.Boxes.end(), std::back_inserter(Boxes));
        std::move(other.Contours.begin(), other.Contours.end(), std::back_inserter(Contours));
    }
};

/// How many groups back a contour may still find the one that it belongs to.
constexpr std::size_t RecentGroups = 16;

/// Joins the groups that `added` belongs to. Letters stay apart: tessellating takes far more than
/// twice as long for twice as many contours at once.
void AddToGroups(std::vector<TGroup>& groups, TGroup added) {
    const QRectF box = added.Boxes.front();
    const std::size_t recent = groups.size() - std::min(groups.size(), RecentGroups);
    for (std::size_t i = groups.size(); i-- > recent;) {
        if (!groups[i].Takes(box)) continue;
        added.Add(std::move(groups[i]));
        groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(i));
    }
    groups.push_back(std::move(added));
}

std::vector<TTextPoint> Tessellated(std::vector<TGroup>& groups) {
    std::vector<TTextPoint> triangles;
    TTessellation target{&triangles, {}};
    const TTessellator tess;
    // Outlines of letters may overlap.
    gluTessProperty(tess.Get(), GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    gluTessNormal(tess.Get(), 0, 0, 1);
    tess.SetCallback(GLU_TESS_VERTEX_DATA, TakeVertex);
    tess.SetCallback(GLU_TESS_COMBINE_DATA, Combine);
    tess.SetCallback(GLU_TESS_EDGE_FLAG, IgnoreEdge);
    for (TGroup& group : groups) {
        gluTessBeginPolygon(tess.Get(), &target);
        for (TContour& contour : group.Contours) {
            gluTessBeginContour(tess.Get());
            for (TVertex& vertex : contour) gluTessVertex(tess.Get(), vertex.data(), &vertex);
            gluTessEndContour(tess.Get());
        }
        gluTessEndPolygon(tess.Get());
        triangles.resize(triangles.size() / 3 * 3);
    }
    return triangles;
}

TContour Contour(const QPolygonF& polygon) {
    TContour contour;
    for (const QPointF& point : polygon) contour.push_back({point.x(), point.y(), 0});
    if (polygon.isClosed() && !contour.empty()) contour.pop_back(); // the first point again
    return contour;
}

std::vector<TTextPoint> Outline(const TContour& contour) {
    std::vector<TTextPoint> outline;
    for (const auto& [x, y, z] : contour)
        outline.push_back({static_cast<float>(x), static_cast<float>(y)});
    return outline;
}

QFont OutlineFont(const TFont& textFont) {
    QFont font = textFont.ToQFont(OutlinePixels);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// The outlines of text, y upwards, in units of the cap height.
QList<QPolygonF> TextPolygons(const QString& text, const TFont& textFont) {
    const QFont font = OutlineFont(textFont);
    const QFontMetricsF metrics(font);
    const QPainterPath path = TextPath(text, font, metrics.lineSpacing());
    const double scale = 1 / CapHeight(font, metrics);
    QList<QPolygonF> polygons = path.toSubpathPolygons();
    for (QPolygonF& polygon : polygons) polygon = QTransform::fromScale(scale, -scale).map(polygon);
    return polygons;
}

} // namespace

TTextShape MakeTextShape(const QString& text, const TFont& font) {
    if (!HasFonts()) return {};
    TTextShape shape;
    std::vector<TGroup> groups;
    for (const QPolygonF& polygon : TextPolygons(text, font)) {
        const TContour contour = Contour(polygon);
        shape.Outlines.push_back(Outline(contour));
        AddToGroups(groups, {{polygon.boundingRect()}, {contour}});
    }
    shape.Triangles = Tessellated(groups);
    return shape;
}

TTextBox MeasureText(const QString& text, const TFont& font) {
    if (!HasFonts()) return {};
    QRectF box;
    for (const QPolygonF& polygon : TextPolygons(text, font)) box |= polygon.boundingRect();
    return {{static_cast<float>(box.left()), static_cast<float>(box.top())},
            {static_cast<float>(box.right()), static_cast<float>(box.bottom())}};
}

double AdvanceOfText(const QString& text, const TFont& font) {
    if (!HasFonts()) return 0;
    const QFont outline = OutlineFont(font);
    const QFontMetricsF metrics(outline);
    return metrics.horizontalAdvance(text) / CapHeight(outline, metrics);
}

TTextBitmap MakeTextBitmap(const QString& text, const TFont& textFont) {
    if (!HasFonts()) return {};
    QFont font = textFont.ToQFont(textFont.Height());
    font.setStyleStrategy(QFont::NoAntialias);
    const QFontMetrics metrics(font);
    const QStringList lines = Lines(text);
    int width = 0;
    for (const QString& line : lines) width = std::max(width, metrics.horizontalAdvance(line));
    const qsizetype height =
        (lines.size() - 1) * metrics.lineSpacing() + metrics.ascent() + metrics.descent();
    QImage canvas(std::clamp(width + metrics.maxWidth(), 1, MaxBitmapSide),
                  static_cast<int>(std::clamp<qsizetype>(height, 1, MaxBitmapSide)),
                  QImage::Format_RGB32);
    canvas.fill(Qt::black);
    QPainter painter(&canvas);
    painter.setFont(font);
    painter.setPen(Qt::white);
    for (int y = metrics.ascent(); const QString& line : lines) {
        painter.drawText(0, y, line);
        y += metrics.lineSpacing();
    }
    painter.end();
    QImage bits = canvas.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    // Which of its two colours a bit stands for is the conversion's choice.
    if (qGray(bits.color(1)) < qGray(bits.color(0))) bits.invertPixels();
    return {bits.mirrored(), bits.height() - metrics.ascent()};
}

} // namespace ZEP
