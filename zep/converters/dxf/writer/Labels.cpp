#include <zep/converters/ReadReport.h>
#include <zep/converters/dxf/Frame.h>
#include <zep/converters/dxf/writer/Entities.h>
#include <zep/converters/dxf/writer/Pairs.h>
#include <zep/objects/Label.h>
#include <zep/objects/TextShape.h>
#include <zep/scene/Vectors.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr double UnmeasuredSpacing = 5.0 / 3; ///< where there are no fonts
constexpr double NoAngle = 1e-9;              ///< degrees

/// From a base line to the next, in heights of capital letters.
double SpacingOf(const TFont& font) {
    const double one = MeasureText(QStringLiteral("H"), font).Min[1];
    const double two = MeasureText(QStringLiteral("H\nH"), font).Min[1];
    return two < one ? one - two : UnmeasuredSpacing;
}

/// Two percent signs would begin a code, and a backslash may.
QString WithoutCodes(const QString& text) {
    QString plain = text;
    plain.replace(QStringLiteral("\\U+"), QStringLiteral("\\U+005CU+"), Qt::CaseInsensitive);
    plain.replace(QStringLiteral("\\M+"), QStringLiteral("\\U+005CM+"), Qt::CaseInsensitive);
    return plain.replace(QStringLiteral("%%"), QStringLiteral("%%%%%%"));
}

double AsDegrees(double radians) {
    return radians * 180 / std::numbers::pi;
}

} // namespace

void TDXFEntityWriter::WriteLabel(TZEPObject& object) {
    auto& label = static_cast<TZEPLabel&>(object);
    if (label.BitmapFont()) return Count(QStringLiteral("texts as high as pixels say"));
    const QStringList lines = label.Caption().left(MaxTextLength).split(u'\n');
    const double spacing = lines.size() > 1 ? SpacingOf(*label.Font()) : 0;
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (!lines[i].trimmed().isEmpty()) WriteText(lines[i], -spacing * static_cast<double>(i));
}

/// \param up  of its base line, in heights of the label
void TDXFEntityWriter::WriteText(const QString& text, double up) {
    const TGLArrayd3 place = Placed({0, up, 0});
    const TGLArrayd3 x = Placed({1, up, 0}) - place, y = Placed({0, up + 1, 0}) - place;
    const double width = Length(x), area = Length(Cross(x, y));
    if (!Take(std::array{place, place + x, place + y}) || !(area > 0)) return;
    const double height = area / width;
    const TGLArrayd3 normal = WrittenDXFNormal(Cross(x, y));
    const TGLMatrixd4 frame = ExtrusionFrame(normal);
    const TGLArrayd3 along = InDXFPlane(frame, x);
    const double oblique = AsDegrees(std::atan2(Dotd(x, y), area));
    Begin("TEXT", "AcDbText");
    m_pairs.Point(10, InDXFPlane(frame, place));
    m_pairs.Number(40, height);
    m_pairs.Words(1, WithoutCodes(text));
    const double turn = AsDegrees(std::atan2(along[1], along[0]));
    if (std::abs(turn) > NoAngle) m_pairs.Number(50, turn);
    if (width != height) m_pairs.Number(41, width / height);
    if (std::abs(oblique) > NoAngle) m_pairs.Number(51, oblique);
    WriteExtrusion(normal);
    m_pairs.Text(100, "AcDbText");
}

} // namespace ZEP
