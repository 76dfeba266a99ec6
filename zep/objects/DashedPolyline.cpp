#include <zep/objects/DashedPolyline.h>

#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>

#include <QLocale>

namespace ZEP {

namespace {

const TRegisterObject<TZEPDashedPolyline> RegisteredDashedPolyline;

/// Null for what is no list of numbers, or breaks nothing up.
std::shared_ptr<const TZEPDashPattern> PatternOf(const QString& dashes) {
    std::vector<double> parts;
    for (const QStringView part : QStringView(dashes).split(u' ', Qt::SkipEmptyParts)) {
        bool isNumber = false;
        parts.push_back(QLocale::c().toDouble(part, &isNumber));
        if (!isNumber || parts.size() > TZEPDashPattern::MaxParts) return {};
    }
    return TZEPDashPattern::Of(parts);
}

void Send(const TDashedEnd& end) {
    glTexCoord1d(end.Along);
    glVertex3dv(end.Point.data());
}

} // namespace

TZEPDashedPolyline::TZEPDashedPolyline(TComponent* owner) : TZEPPolyline(owner) {}

void TZEPDashedPolyline::SetDashes(const QString& dashes) {
    if (!Change(m_dashes, dashes)) return;
    m_pattern = PatternOf(dashes);
    Invalidate(this);
}

void TZEPDashedPolyline::SetPattern(const std::shared_ptr<const TZEPDashPattern>& pattern) {
    if (!Change(m_dashes, pattern ? pattern->Text() : QString())) return;
    m_pattern = pattern;
    Invalidate(this);
}

void TZEPDashedPolyline::SetRunsOn(bool runsOn) {
    if (Change(m_runsOn, runsOn)) Invalidate(this);
}

void TZEPDashedPolyline::ForEachLine(
    const std::function<void(const TDashedEnd& from, const TDashedEnd& to)>& line) {
    std::vector<TGLArrayd3> points;
    const TZEPVertexes& vertexes = *Vertexes();
    for (int i = 0; i < vertexes.Count(); ++i) points.push_back(vertexes[i].Data());
    ForEachDashedLine({points, Closed(), m_runsOn, *m_pattern}, line);
}

void TZEPDashedPolyline::DrawShape(GLenum face, bool draft) {
    if (!m_pattern) return TZEPPolyline::DrawShape(face, draft);
    const TDashScope dashes(*m_pattern->Texture());
    const TPrimitiveScope lines(GL_LINES);
    ForEachLine([](const TDashedEnd& from, const TDashedEnd& to) {
        Send(from);
        Send(to);
    });
}

} // namespace ZEP
