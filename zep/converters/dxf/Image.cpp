#include <zep/appearance/materials/Material.h>
#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/Curves.h>
#include <zep/converters/dxf/Part.h>
#include <zep/converters/dxf/PointList.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/Vectors.h>

namespace ZEP {

namespace {

enum TImageFlag { ifShow = 1, ifClip = 4 };
constexpr int PolygonBoundary = 2;

/// A picture in a drawing: how its pixels lie there.
struct TPlacedImage {
    explicit TPlacedImage(const TDXFRecord& record)
        : Corner(record.Point(10)), Across(record.Point(11)), Up(record.Point(12)),
          Width(record.Number(13)), Height(record.Number(23)) {}

    /// A place in pixels from the middle of the first one, down.
    [[nodiscard]] TGLArrayd3 InDrawing(const TGLArrayd3& pixel) const {
        return Corner + Across * (pixel[0] + 0.5) + Up * (Height - pixel[1] - 0.5);
    }
    [[nodiscard]] double S(const TGLArrayd3& pixel) const { return (pixel[0] + 0.5) / Width; }
    [[nodiscard]] double T(const TGLArrayd3& pixel) const { return 1 - (pixel[1] + 0.5) / Height; }

    TGLArrayd3 Corner, Across, Up;
    double Width, Height;
};

std::vector<TGLArrayd3> Rectangle(const TGLArrayd3& a, const TGLArrayd3& b) {
    return {{a[0], a[1], 0}, {b[0], a[1], 0}, {b[0], b[1], 0}, {a[0], b[1], 0}};
}

/// In pixels.
std::vector<TGLArrayd3> BoundaryOf(const TDXFRecord& record, const TPlacedImage& image) {
    const bool isClipped = record.Flag(70, ifClip) && record.Integer(280) != 0;
    const std::vector<TGLArrayd3> points = TDXFPointList(14, record).Points;
    if (isClipped && record.Integer(71, 1) == PolygonBoundary && points.size() >= 3) return points;
    if (isClipped && points.size() == 2) return Rectangle(points[0], points[1]);
    return Rectangle({-0.5, -0.5, 0}, {image.Width - 0.5, image.Height - 0.5, 0});
}

/// Each shows a texture of its own.
bool FitsBudget(TDXFBuilder& builder, TZEPTexture& texture) {
    constexpr qint64 longest = 1024, bytesOfTexel = 4;
    const QSize size = texture.Image()->Image().size();
    return builder.Drawing.Budget.Take(std::min<qint64>(size.width(), longest) *
                                       std::min<qint64>(size.height(), longest) * bytesOfTexel);
}

TDXFReport::TReason ReasonOf(TModelTextures::TOutcome outcome) {
    switch (outcome) {
    case TModelTextures::TOutcome::NoPicture:
        return TDXFReport::TReason::NoPicture;
    case TModelTextures::TOutcome::TooMany:
        return TDXFReport::TReason::TooMany;
    default:
        return TDXFReport::TReason::NoFile;
    }
}

void AddPicture(TDXFBuilder& builder, const TDXFRecord& record, const TPlacedImage& image,
                const std::vector<TGLArrayd3>& boundary, TZEPTexture& texture) {
    const TDXFPart part(record, record.Kind(), {.TrueColor = 0xFFFFFF});
    builder.Add<TZEPPolygon>(part.Record(), boundary.size(), [&](TZEPPolygon& polygon) {
        polygon.SetColorVertexes(false);
        polygon.Vertexes()->AddEach(boundary.size(), [&](TZEPVertex3TexCI& vertex, std::size_t i) {
            vertex.SetPointQuietly(image.InDrawing(boundary[i]));
            vertex.SetTexCoordQuietly(image.S(boundary[i]), image.T(boundary[i]));
        });
        TZEPTexture& own = *polygon.Material()->Texture();
        own.SetEnvironment(teReplace);
        own.SetWrapS(twClampToEdge);
        own.SetWrapT(twClampToEdge);
        own.SetTexturePic(texture.Image());
    });
}

} // namespace

void AddDXFImage(TDXFBuilder& builder, const TDXFRecord& record) {
    const TPlacedImage image(record);
    const std::vector<TGLArrayd3> boundary = BoundaryOf(record, image);
    std::vector<TGLArrayd3> outline;
    for (const TGLArrayd3& pixel : boundary) outline.push_back(image.InDrawing(pixel));
    if (!(image.Width > 0) || !(image.Height > 0) || !std::ranges::all_of(outline, IsFinite))
        return builder.Pass(record, TDXFReport::TReason::NoPoints);
    const TDXFRecord* definition = builder.Drawing.Objects.Find(record.Text(340), "IMAGEDEF");
    const QString name = definition ? builder.Drawing.Text.Decode(definition->Text(1)) : QString();
    TZEPTexture texture;
    auto outcome = builder.Drawing.Pictures.Load(texture, name).Outcome;
    if (outcome == TModelTextures::TOutcome::Loaded && !FitsBudget(builder, texture))
        outcome = TModelTextures::TOutcome::TooMany;
    const bool isLoaded = outcome == TModelTextures::TOutcome::Loaded;
    if (isLoaded && record.Flag(70, ifShow))
        return AddPicture(builder, record, image, boundary, texture);
    if (!isLoaded) builder.Pass(record, ReasonOf(outcome));
    builder.AddChain(record, CheckedChain({outline, true}), idd, false);
}

} // namespace ZEP
