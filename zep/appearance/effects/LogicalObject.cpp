#include <zep/appearance/effects/LogicalObject.h>

#include <zep/appearance/effects/DepthRegion.h>
#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>
#include <zep/gl/StencilCount.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/SectionScopes.h>
#include <zep/scene/SeenRegion.h>
#include <zep/scene/XForm.h>

#include <QPointer>
#include <QScopedValueRollback>

#include <array>
#include <optional>

namespace ZEP {

namespace {

const TRegisterObject<TZEPLogicalObject> RegisteredLogicalObject;

// The stencil's bits: the highest marks the pixels of a mirror that is being filled.
constexpr GLuint Mirror = 0x80;
constexpr GLuint Shown = 0x40;
constexpr GLuint Counts = 0x3F;

TZEPRegion RegionOf(const TZEPObject& a, const TZEPObject& b) {
    const TGLMatrixd4 toClip = LoadedToClip();
    TZEPSeenPart part;
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
    std::optional<TZEPWholeScope> whole; // what is counted must not be cut
    if (m_operation != loOR) whole.emplace(scene.Frame());
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
