#include <zep/objects/Polyline.h>

#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>
#include <zep/objects/SegmentCount.h>
#include <zep/objects/VertexBounds.h>
#include <zep/objects/VertexColors.h>
#include <zep/scene/Spline.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

const TRegisterObject<TZEPPolyline> RegisteredPolyline;

/// So many edges are left out at once where they are not seen.
constexpr int BlockEdges = 128;

TGLArrayd3 ColorPoint(const TZEPVertex3CI& vertex) {
    const TGLColor color = vertex.RGBA();
    return {color[0], color[1], color[2]};
}

} // namespace

TZEPPolyline::TZEPPolyline(TComponent* owner) : TZEPLineShape(owner) {
    m_vertexes.RegisterObject(this);
}

TZEPPolyline::~TZEPPolyline() {
    SetDisplayList(0);
}

void TZEPPolyline::SetSegments(int segments) {
    if (Change(m_segments, SegmentCount(segments))) Invalidate(this);
}

void TZEPPolyline::SetColorVertexes(bool colorVertexes) {
    if (Change(m_colorVertexes, colorVertexes)) Invalidate(this);
}

void TZEPPolyline::SetClosed(bool closed) {
    if (Change(m_closed, closed)) Invalidate(this);
}

void TZEPPolyline::SetOrigColor(TColor color) {
    if (Change(m_origColor, color)) Invalidate(this);
}

void TZEPPolyline::SetInError(bool inError) {
    if (Change(m_inError, inError)) Invalidate(this);
}

void TZEPPolyline::SetMaxZValue(double value) {
    if (Change(m_maxZValue, value)) Invalidate(this);
}

void TZEPPolyline::SetMinZValue(double value) {
    if (Change(m_minZValue, value)) Invalidate(this);
}

void TZEPPolyline::SetDisplayList(int list) {
    const auto name = static_cast<GLuint>(std::max(list, 0));
    if (name != m_displayList.Name()) m_compiled = false;
    m_displayList.Adopt(name);
}

void TZEPPolyline::SetUseDisplayList(bool useDisplayList) {
    if (Change(m_useDisplayList, useDisplayList)) Invalidate(this);
}

void TZEPPolyline::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    GetVertexBounds(m_vertexes, min, max);
}

void TZEPPolyline::Invalidate(TObject* sender) {
    if (sender == this || sender == &m_vertexes) SetDisplayList(0);
    TZEPLineShape::Invalidate(sender);
}

// A list that is out of date must go, also where the scene is updated by hand.
bool TZEPPolyline::WantsInvalidation() const {
    return m_displayList.Exists() || TZEPLineShape::WantsInvalidation();
}

void TZEPPolyline::ShowState() {
    if (Selected()) return SetColor(clWhite);
    SetColor(m_inError ? clRed : m_origColor);
}

void TZEPPolyline::DrawMain(bool draft) {
    ShowState();
    TZEPLineShape::DrawMain(draft);
}

void TZEPPolyline::DrawTransparent(bool draft) {
    ShowState();
    TZEPLineShape::DrawTransparent(draft);
}

void TZEPPolyline::DrawShape(GLenum, bool draft) {
    const bool listed = m_useDisplayList && !draft;
    if (m_vertexes.Count() < 2 && !(listed && m_displayList.Exists())) return;
    if (!listed) return SendChain();
    m_compiled = m_compiled || !m_displayList.Exists();
    m_displayList.Draw([this] { SendChain(); });
}

void TZEPPolyline::SendChain() const {
    const TVertexColors colors(m_colorVertexes);
    if (const auto volume = CanLeaveOut() ? TZEPViewVolume::OfSight() : std::nullopt)
        return SendSeen(*volume);
    const TPrimitiveScope chain(m_closed ? GL_LINE_LOOP : GL_LINE_STRIP);
    if (Smooth())
        SendSpline();
    else
        SendVertexes();
}

void TZEPPolyline::SendVertexes() const {
    for (int i = 0; i < m_vertexes.Count(); ++i) SendVertex(i);
}

void TZEPPolyline::SendVertex(int i) const {
    if (m_colorVertexes) glColor4fv(m_vertexes[i].RGBA().data());
    glVertex3dv(m_vertexes[i].Data().data());
}

// A pattern runs on from edge to edge, also through those that are not seen.
bool TZEPPolyline::CanLeaveOut() const {
    return !Smooth() && Style() == psSolid && m_vertexes.Count() > 2 * BlockEdges &&
           MayBeCulled() && IsOfKnownClass();
}

void TZEPPolyline::SendSeen(const TZEPViewVolume& volume) const {
    const int last = m_vertexes.Count() - 1;
    for (int first = 0; first < last; first += BlockEdges)
        SendBlock(first, std::min(first + BlockEdges, last), volume);
    if (!m_closed) return;
    const TPrimitiveScope edge(GL_LINES);
    SendVertex(last);
    SendVertex(0);
}

void TZEPPolyline::SendBlock(int first, int last, const TZEPViewVolume& volume) const {
    TZEPBlockBox box;
    for (int i = first; i <= last; ++i) box.Add(m_vertexes[i].Data());
    if (volume.Shows(box.Min, box.Max) == TZEPSeen::Nothing) return;
    const TPrimitiveScope chain(GL_LINE_STRIP);
    for (int i = first; i <= last; ++i) SendVertex(i);
}

void TZEPPolyline::SendSpline() const {
    // Everything is drawn on one thread, and a spline that is filled again allocates nothing.
    static TZEPSpline positions;
    static TZEPSpline colors;
    positions.Clear();
    colors.Clear();
    for (int i = 0; i < m_vertexes.Count(); ++i) {
        positions.AddVertex(m_vertexes[i].Data());
        if (m_colorVertexes) colors.AddVertex(ColorPoint(m_vertexes[i]));
    }
    // One clamp serves both; it never reaches a colour unless the bounds are set that narrow.
    const auto clampedAt = [this](TZEPSpline& spline, double t) {
        TGLArrayd3 point;
        spline.GetVertex(t, point);
        point[2] = std::fmax(std::fmin(point[2], m_maxZValue), m_minZValue);
        return point;
    };
    for (int i = 0; i <= m_segments; ++i) {
        const double t = static_cast<double>(i) / m_segments;
        if (m_colorVertexes) glColor3dv(clampedAt(colors, t).data());
        glVertex3dv(clampedAt(positions, t).data());
    }
}

} // namespace ZEP
