#include <zep/objects/Polygon.h>

#include <zep/appearance/materials/Material.h>
#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>
#include <zep/gl/Tessellator.h>
#include <zep/objects/VertexBounds.h>
#include <zep/objects/VertexColors.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Vertex3.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <tuple>
#include <vector>

namespace ZEP {

namespace {

const TRegisterObject<TZEPPolygon> RegisteredPolygon;

/// The vertices that were made where edges cross.
std::deque<std::array<double, 6>>& CombinedVertices() {
    static std::deque<std::array<double, 6>> vertices;
    return vertices;
}

GLenum Primitive(bool draft, int count) {
    if (draft) return GL_LINE_LOOP;
    return count > 4 ? GL_POLYGON : GL_TRIANGLE_FAN;
}

} // namespace

/// The numbers of the vertexes by their x and y: of a polygon with many vertexes each is looked up.
struct TZEPPolygon::TPlaces {
    struct TPlace {
        double X, Y;
        int Index;
        bool operator<(const TPlace& other) const {
            return std::tie(X, Y, Index) < std::tie(other.X, other.Y, other.Index);
        }
    };
    std::vector<TPlace> Sorted;
};

TZEPPolygon::TZEPPolygon(TComponent* owner) : TZEPReflexedObject(owner) {
    m_vertexes.RegisterObject(this);
}

TZEPPolygon::~TZEPPolygon() = default;

void TZEPPolygon::SetColorVertexes(bool colorVertexes) {
    if (Change(m_colorVertexes, colorVertexes)) Invalidate(this);
}

void TZEPPolygon::SetAutoNormal(bool autoNormal) {
    if (Change(m_autoNormal, autoNormal)) Invalidate(this);
}

void TZEPPolygon::SetUseDisplayList(bool useDisplayList) {
    if (Change(m_useDisplayList, useDisplayList)) Invalidate(this);
}

void TZEPPolygon::SetConcave(bool concave) {
    if (Change(m_concave, concave)) Invalidate(this);
}

std::array<TGLArrayd3, 3> TZEPPolygon::MirrorPoints() const {
    if (m_vertexes.Count() < 3) return {};
    return {m_vertexes[0].Data(), m_vertexes[1].Data(), m_vertexes[2].Data()};
}

TGLArrayd3 TZEPPolygon::GetCenter() const {
    return VertexCenter(m_vertexes);
}

double TZEPPolygon::GetRadius() const {
    return BoxRadius(GetMin(), GetMax());
}

void TZEPPolygon::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    GetVertexBounds(m_vertexes, min, max);
}

// The lists go in any case: of fewer vertexes than it was made from nothing is drawn.
void TZEPPolygon::Invalidate(TObject* sender) {
    ClearDisplayList();
    ForgetShape();
    ForgetBox();
    m_places.reset();
    if (m_vertexes.Count() >= 3) TZEPReflexedObject::Invalidate(sender);
}

// What is out of date must go, also where the scene is updated by hand.
bool TZEPPolygon::WantsInvalidation() const {
    return HasList() || m_places || TZEPReflexedObject::WantsInvalidation();
}

bool TZEPPolygon::HasList() const {
    return std::ranges::any_of(m_lists, &TDisplayList::Exists);
}

void TZEPPolygon::ClearDisplayList() {
    for (TDisplayList& list : m_lists) list.Reset();
}

TDisplayList& TZEPPolygon::ListOf(GLenum face) {
    if (face == GL_FRONT_AND_BACK) return m_lists[0];
    return m_lists[face == GL_FRONT ? 1 : 2];
}

// --- drawing -----------------------------------------------------------------------------------

void TZEPPolygon::PrepareGeometry() {
    if (m_vertexes.Count() < 3) return;
    DrawFrame().Run.OpenSurface();
    glNormal3dv(DrawnNormal().data());
}

void TZEPPolygon::DrawSpecific(GLenum face, bool draft) {
    DrawFrame().Run.OpenSurface();
    if (m_vertexes.Count() < 3) return;
    if (draft || !m_useDisplayList || DrawFrame().IsNotRendering) return Send(face, draft);
    // A material of the library does not tell of its changes.
    if (Change(m_listAlpha, DrawnMaterial().Transparency())) ClearDisplayList();
    ListOf(face).Draw([&] { Send(face, draft); });
}

void TZEPPolygon::Send(GLenum face, bool draft) {
    if (m_concave && !draft)
        SendTessellated(face);
    else
        SendDirect(face, draft);
}

TGLArrayd3 TZEPPolygon::DrawnNormal() const {
    if (!m_autoNormal) return FirstPoint();
    TGLArrayd3 normal;
    CalcNormald(m_vertexes[0].Data(), m_vertexes[1].Data(), m_vertexes[2].Data(), normal);
    return normal;
}

/// Of no mirror, the transparency itself, not what is left of it: drawings rely on it.
float TZEPPolygon::VertexAlpha() {
    if (Reflection() > 0) return static_cast<float>(1 - Reflection());
    return DrawnMaterial().Transparency();
}

void TZEPPolygon::SendDirect(GLenum face, bool draft) {
    glPushAttrib(GL_COLOR_BUFFER_BIT);
    {
        const TVertexColors colors(m_colorVertexes);
        const float alpha = m_colorVertexes ? VertexAlpha() : 0;
        const TGLArrayd3 normal = DrawnNormal();
        if (face != GL_BACK) SendLoop(false, draft, normal, alpha);
        if (face != GL_FRONT) SendLoop(true, draft, {-normal[0], -normal[1], -normal[2]}, alpha);
    }
    glPopAttrib();
}

void TZEPPolygon::SendLoop(bool reversed, bool draft, const TGLArrayd3& normal, float alpha) {
    const int count = m_vertexes.Count();
    glBegin(Primitive(draft, count));
    glNormal3dv(normal.data());
    for (int i = 0; i < count; ++i) {
        const TZEPVertex3TexCI& vertex = m_vertexes[reversed ? count - 1 - i : i];
        if (m_colorVertexes) glColor4fv(ToGLColor(vertex.Color(), alpha).data());
        glTexCoord2d(vertex.TexX(), vertex.TexY());
        glVertex3dv(vertex.Data().data());
    }
    glEnd();
}

// --- tessellation ------------------------------------------------------------------------------

GLUtesselator* TZEPPolygon::Tessellator() {
    static const TTessellator tessellator = [] {
        TTessellator made;
        made.SetCallback(GLU_TESS_BEGIN, glBegin);
        made.SetCallback(GLU_TESS_END, glEnd);
        made.SetCallback(GLU_TESS_VERTEX_DATA, vertexCallbackData);
        made.SetCallback(GLU_TESS_COMBINE, combineCallback);
        return made;
    }();
    return tessellator.Get();
}

void TZEPPolygon::Begin_Polygon() {
    CombinedVertices().clear();
    gluTessBeginPolygon(Tessellator(), this);
}

void TZEPPolygon::End_Polygon() {
    gluTessEndPolygon(Tessellator());
    m_places.reset();
}

void TZEPPolygon::Begin_Contour() {
    gluTessBeginContour(Tessellator());
}

void TZEPPolygon::End_Contour() {
    gluTessEndContour(Tessellator());
}

const TZEPVertex3TexCI* TZEPPolygon::VertexAt(double x, double y) {
    const int last = m_vertexes.Count() - 1;
    if (last < 0) return nullptr;
    if (!m_places) {
        m_places = std::make_unique<TPlaces>();
        for (int i = 0; i < last; ++i) {
            const TZEPVertex3TexCI& vertex = m_vertexes[i];
            if (std::isnan(vertex.X()) || std::isnan(vertex.Y())) continue;
            m_places->Sorted.push_back({vertex.X(), vertex.Y(), i});
        }
        std::ranges::sort(m_places->Sorted, std::less<>());
    }
    const auto place =
        std::ranges::lower_bound(m_places->Sorted, TPlaces::TPlace{x, y, 0}, std::less<>());
    const bool found = place != m_places->Sorted.end() && place->X == x && place->Y == y;
    return &m_vertexes[found ? place->Index : last];
}

/// What GLU cannot compute with would make it fail.
bool TZEPPolygon::CanBeTessellated() const {
    for (int i = 0; i < m_vertexes.Count(); ++i)
        for (const double c : m_vertexes[i].Data())
            if (!(std::fabs(c) < GLU_TESS_MAX_COORD)) return false;
    return true;
}

// Front and back are the other way round than in the direct drawing; the tessellator turns a
// contour by its own normal, so that both orders are filled.
void TZEPPolygon::SendTessellated(GLenum face) {
    if (!CanBeTessellated()) return;
    gluTessProperty(Tessellator(), GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_POSITIVE);
    if (face != GL_FRONT) SendContour(false);
    if (face != GL_BACK) SendContour(true);
}

void TZEPPolygon::SendContour(bool reversed) {
    Begin_Polygon();
    Begin_Contour();
    const int count = m_vertexes.Count();
    for (int i = 0; i < count; ++i) {
        // GLU takes places to change but only reads them.
        auto* place = const_cast<double*>(m_vertexes[reversed ? count - 1 - i : i].Data().data());
        gluTessVertex(Tessellator(), place, place);
    }
    End_Contour();
    End_Polygon();
}

void vertexCallbackData(const double* vertex, TZEPPolygon* polygon) {
    if (const TZEPVertex3TexCI* found = polygon->VertexAt(vertex[0], vertex[1]))
        glTexCoord2d(found->TexX(), found->TexY());
    glVertex3dv(vertex);
}

void combineCallback(const double place[3], void* [4], const float[4], void** result) {
    *result =
        CombinedVertices().emplace_back(std::array<double, 6>{place[0], place[1], place[2]}).data();
}

} // namespace ZEP
