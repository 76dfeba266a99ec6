#include "viewer/drawing/Ground.h"

#include <zep/appearance/materials/Material.h>
#include <zep/framework/Contrast.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

namespace ZEP {

namespace {

constexpr int Cells = 48;
constexpr double Shine = 0.25;
constexpr double Reach = 1.1;   // half its side, in diagonals of the content
constexpr double Gap = 0.0005;  // below the content, in its diagonals: what stands flat on it shows
constexpr double OnDark = 0.45; // of the way to white
constexpr double OnBright = 0.9;

TColor Mixed(const QColor& color, double part) {
    const auto mix = [part](double a) { return static_cast<float>(a + (1 - a) * part); };
    return FromQColor(QColor::fromRgbF(mix(color.redF()), mix(color.greenF()), mix(color.blueF())));
}

} // namespace

TGround::TGround(TZEPScene* scene) : TZEPHeightField(scene) {
    SetSmooth(true);
    SetSlicesX(Cells);
    SetSlicesY(Cells);
    SetReceiveShadows(true);
    SetReflection(Shine);
    SetSelectable(false);
    SetPickable(false);
    SetParentComponent(scene);
}

void TGround::LieBelow(const TZEPBounds& content) {
    const double diagonal = DiagonalOf(content);
    XForm()->Scale()->SetData(2 * Reach * diagonal, 2 * Reach * diagonal, 1);
    XForm()->Translate()->SetData((content.Min[0] + content.Max[0]) / 2,
                                  (content.Min[1] + content.Max[1]) / 2,
                                  content.Min[2] - Gap * diagonal);
}

void TGround::Suit(TColor background) {
    const bool bright = IsBright(background);
    const TColor color = Mixed(ToQColor(background), bright ? OnBright : OnDark);
    TZEPFaceMaterial& face = *Material()->FrontFace();
    face.SetDiffuse(color);
    face.SetAmbient(color);
    face.SetSpecular(clBlack);
}

void TGround::Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) {
    if (kind == dkSelect) return;
    if (!m_even || (ObjectPasses & PassBit(state)) == 0)
        return TZEPHeightField::Draw(scene, state, kind);
    scene.Frame().Run.End();
    const TZEPAttribScope lights(GL_ENABLE_BIT);
    for (GLenum light = GL_LIGHT0; light <= GL_LIGHT7; ++light) glDisable(light);
    TZEPHeightField::Draw(scene, state, kind);
    scene.Frame().Run.End();
}

void TGround::DrawSpecific(GLenum face, bool draft) {
    const TZEPAttribScope attributes(GL_ENABLE_BIT);
    glEnable(GL_CULL_FACE);
    TZEPHeightField::DrawSpecific(face, draft);
}

} // namespace ZEP
