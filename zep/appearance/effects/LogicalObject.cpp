#include <zep/appearance/effects/LogicalObject.h>

#include <zep/appearance/effects/DepthRegion.h>
#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>
#include <zep/gl/StencilCount.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/XForm.h>

#include <QPointer>
#include <QScopedValueRollback>

#include <algorithm>
#include <array>
#include <cmath>

namespace ZEP {

namespace {

const TRegisterObject<TZEPLogicalObject> RegisteredLogicalObject;

// The stencil's bits: the highest marks the pixels of a mirror that is being filled.
constexpr GLuint Mirror = 0x80;
constexpr GLuint Shown = 0x40;
constexpr GLuint Counts = 0x3F;

/// Where a corner of a box is in the viewport, in parts of its width and height; false behind the
/// eye.
bool ToView(const TGLMatrixd4& toClip, const TGLArrayd3& corner, double& x, double& y) {
    std::array<double, 4> clip = toClip[3];
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 4; ++k) clip[k] += corner[i] * toClip[i][k];
    if (!(clip[3] > 1e-9)) return false;
    x = (clip[0] / clip[3] + 1) / 2;
    y = (clip[1] / clip[3] + 1) / 2;
    return std::isfinite(x) && std::isfinite(y);
}

/// The part of the viewport that a box is seen in.
struct TSeenPart {
    double MinX = 1, MinY = 1, MaxX = 0, MaxY = 0;

    void Add(const TGLMatrixd4& toClip, const TGLArrayd3& min, const TGLArrayd3& max) {
        for (unsigned corner = 0; corner < 8; ++corner) {
            double x = 0;
            double y = 0;
            if (!ToView(toClip,
                        {(corner & 1U ? max : min)[0], (corner & 2U ? max : min)[1],
                         (corner & 4U ? max : min)[2]},
                        x, y))
                return AddAll();
            MinX = std::min(MinX, x);
            MinY = std::min(MinY, y);
            MaxX = std::max(MaxX, x);
            MaxY = std::max(MaxY, y);
        }
    }
    void AddAll() {
        MinX = MinY = 0;
        MaxX = MaxY = 1;
    }
    [[nodiscard]] TZEPRegion InPixels() const {
        std::array<GLint, 4> viewport{};
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        const auto place = [](double part, int size, int spare) {
            return static_cast<int>(std::clamp(part, 0.0, 1.0) * size) + spare;
        };
        TZEPRegion region;
        region.X = std::max(place(MinX, viewport[2], -1), 0);
        region.Y = std::max(place(MinY, viewport[3], -1), 0);
        region.Width = std::min(place(MaxX, viewport[2], 2), viewport[2]) - region.X;
        region.Height = std::min(place(MaxY, viewport[3], 2), viewport[3]) - region.Y;
        return region;
    }
};

TZEPRegion RegionOf(const TZEPObject& a, const TZEPObject& b) {
    const TGLMatrixd4 toClip = LoadedToClip();
    TSeenPart part;
    for (const TZEPObject* object : {&a, &b}) {
        TGLArrayd3 min;
        TGLArrayd3 max;
        object->GetSize(min, max);
        XformBoxd(object->GetMatrix(), min, max);
        if (object->GetItemsCount() > 0)
            part.AddAll();
        else
            part.Add(toClip, min, max);
    }
    return part.InPixels();
}

} // namespace

void TZEPLogicalObject::SetOperation(TZEPLogicalOperation operation) {
    if (Change(m_operation, operation)) Invalidate(this);
}

void TZEPLogicalObject::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (!Visible()) return;
    const TZEPDrawRun::Walk walk(scene.Frame().Run);
    const TZEPXFormScope transform(scene.Frame(), ExistingXForm());
    const TZEPAttribScope attributes(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT | GL_LIGHTING_BIT);
    if (kind == dkSelect) return DrawChildren(scene, state, kind);
    if (state == dsPre) return DrawPre();
    if (state == dsAllObjects) return DrawLogical(scene, state, kind);
    if (state == dsPost) DrawPost();
}

/// One drawing of two solids as what they have in common or differ in. All of it happens in a
/// region of the window whose depths come back where nothing of the result is seen.
class TZEPLogicalObject::TCarving {
public:
    /// What is drawn may free it.
    using TSolid = QPointer<TZEPObject>;

    TCarving(TZEPObject& first, TZEPObject& second, TZEPSceneContext& scene, TZEPDrawState state,
             TZEPDrawKind kind)
        : m_scene(scene), m_frame(scene.Frame()), m_state(state), m_kind(kind),
          m_region(RegionOf(first, second)), m_depths(m_region),
          m_mirrored(glIsEnabled(GL_STENCIL_TEST) ? Mirror : 0) {
        glEnable(GL_CULL_FACE);
    }
    ~TCarving() {
        WriteColors(true);
        glStencilMask(~0U);
        glCullFace(GL_BACK);
        if (m_mirrored == 0) return;
        glStencilFunc(GL_EQUAL, Mirror, Mirror);
        glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
    }
    TCarving(const TCarving&) = delete;
    TCarving& operator=(const TCarving&) = delete;

    [[nodiscard]] bool IsSeen() const { return !m_region.IsEmpty(); }

    /// Draws what of the faces of `x` that are left by culling `face` lies in `y` or, with
    /// `GL_EQUAL` as the test, outside of it.
    void DrawInside(const TSolid& x, const TSolid& y, GLenum face, GLenum test) {
        ClearCounts();
        m_depths.Read();
        DrawDepth(x, face);
        Count(y);
        DrawCounted(x, face, test);
        RestoreDepth();
    }

private:
    void ClearCounts() const {
        const TZEPAttribScope attributes(GL_SCISSOR_BIT);
        std::array<GLint, 4> viewport{};
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        glEnable(GL_SCISSOR_TEST);
        glScissor(viewport[0] + m_region.X, viewport[1] + m_region.Y, m_region.Width,
                  m_region.Height);
        glStencilMask(Shown | Counts);
        glClearStencil(0);
        glClear(GL_STENCIL_BUFFER_BIT);
    }

    void DrawDepth(const TSolid& x, GLenum face) const {
        WriteColors(false);
        glEnable(GL_STENCIL_TEST);
        glStencilFunc(GL_EQUAL, GLint(m_mirrored), m_mirrored);
        glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
        glCullFace(face);
        Draw(x);
    }

    /// Front faces before what is there count up, back faces down: what is left is how deep that
    /// lies within.
    void Count(const TSolid& y) const {
        glDepthMask(GL_FALSE);
        CountFaces(GL_INCR, GL_DECR, [&] { Draw(y); });
    }

    void DrawCounted(const TSolid& x, GLenum face, GLenum test) const {
        glDepthMask(GL_TRUE);
        WriteColors(true);
        // Outside of the mirror nothing has been counted.
        const GLuint looked = test == GL_EQUAL ? Counts | m_mirrored : Counts;
        glStencilFunc(test, GLint(m_mirrored | Shown), looked);
        glStencilOp(GL_KEEP, GL_KEEP, GL_REPLACE);
        glCullFace(face);
        Draw(x);
    }

    void RestoreDepth() const {
        glStencilFunc(GL_EQUAL, GLint(m_mirrored), m_mirrored | Shown);
        glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
        m_depths.Write();
    }

    void Draw(const TSolid& solid) const {
        if (solid && !m_frame.SceneIsGone) solid->Draw(m_scene, m_state, m_kind);
        m_frame.Run.End();
    }

    TZEPSceneContext& m_scene;
    TZEPFrame& m_frame;
    TZEPDrawState m_state;
    TZEPDrawKind m_kind;
    TZEPRegion m_region;
    TZEPDepthRegion m_depths;
    GLuint m_mirrored; ///< the mark of the mirror that this is drawn in
};

void TZEPLogicalObject::DrawLogical(TZEPSceneContext& scene, TZEPDrawState state,
                                    TZEPDrawKind kind) {
    if (GetItemsCount() < 2) return;
    const TCarving::TSolid first(GetItem(0));
    const TCarving::TSolid second(GetItem(1));
    TZEPFrame& frame = scene.Frame();
    if (m_operation == loOR || frame.Carves || !HasBuffer(GL_STENCIL_BITS)) {
        // Without counts the solid that is carved is shown whole.
        if (m_operation != loSUB || frame.Carves) first->Draw(scene, state, kind);
        if (!second || frame.SceneIsGone) return;
        TZEPObject& object = *second;
        frame.Run.Next(typeid(object));
        object.Draw(scene, state, kind);
        return;
    }
    const QScopedValueRollback carves(frame.Carves, true);
    TCarving carving(*first, *second, scene, state, kind);
    if (!carving.IsSeen()) return;
    if (m_operation == loAND) {
        carving.DrawInside(second, first, GL_BACK, GL_NOTEQUAL);
        return carving.DrawInside(first, second, GL_BACK, GL_NOTEQUAL);
    }
    carving.DrawInside(first, second, GL_FRONT, GL_NOTEQUAL);
    carving.DrawInside(second, first, GL_BACK, GL_EQUAL);
}

} // namespace ZEP
