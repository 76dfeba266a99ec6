#include <zep/objects/DashedPolyline.h>

#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>

#include <QLocale>

namespace ZEP {

namespace {

const TRegisterObject<TZEPDashedPolyline> RegisteredDashedPolyline;

bool AreAlike(const TZEPDashPattern* a, const TZEPDashPattern* b) {
    return a == b || (a && b && a->Parts() == b->Parts());
}

void Send(const TDashedEnd& end) {
    glTexCoord1d(end.Along);
    glVertex3dv(end.Point.data());
}

} // namespace

TZEPDashedPolyline::TZEPDashedPolyline(TComponent* owner) : TZEPPolyline(owner) {}

QString TZEPDashedPolyline::Dashes() const {
    QStringList parts;
    if (m_pattern)
        for (const double part : m_pattern->Parts())
            parts += QString::number(part, 'g', QLocale::FloatingPointShortest);
    return parts.join(u' ');
}

void TZEPDashedPolyline::SetDashes(const QString& dashes) {
    std::vector<double> parts;
    for (const QStringView part : QStringView(dashes).split(u' ', Qt::SkipEmptyParts)) {
        bool isNumber = false;
        parts.push_back(QLocale::c().toDouble(part, &isNumber));
        if (!isNumber || parts.size() > TZEPDashPattern::MaxParts) return SetPattern({});
    }
    SetPattern(TZEPDashPattern::Of(parts));
}

void TZEPDashedPolyline::SetPattern(std::shared_ptr<const TZEPDashPattern> pattern) {
    if (AreAlike(m_pattern.get(), pattern.get())) return;
    m_pattern = std::move(pattern);
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
