#include <zep/objects/Teapot.h>

#include <zep/framework/Property.h>
#include <zep/objects/TeapotPatches.h>

#include <algorithm>

namespace ZEP {

namespace {

const TRegisterObject<TZEPTeapot> RegisteredTeapot;

/// A picture covers each patch once.
constexpr float TextureCorners[4][2] = {{0, 0}, {1, 0}, {0, 1}, {1, 1}};

void SendPatch(const TBezierPatch& patch, GLint segments, GLenum mode) {
    glMap2f(GL_MAP2_TEXTURE_COORD_2, 0, 1, 2, 2, 0, 1, 4, 2, &TextureCorners[0][0]);
    glMap2f(GL_MAP2_VERTEX_3, 0, 1, 3, 4, 0, 1, 12, 4, patch.front().data());
    glMapGrid2f(segments, 0, 1, segments, 0, 1);
    glEvalMesh2(mode, 0, segments, 0, segments);
}

} // namespace

void TZEPTeapot::SetSegments(int segments) {
    if (Change(m_segments, std::clamp(segments, 1, MaxSegments))) Invalidate(this);
}

void TZEPTeapot::SetParts(TZEPTeapotPartSet parts) {
    if (Change(m_parts, parts)) Invalidate(this);
}

void TZEPTeapot::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = {-1.5, -1, -0.75};
    max = {1.75, 1, 0.85};
}

// OpenGL sends the cells of a mesh clockwise about the normals that it generates. The scale below
// mirrors, which makes them counter-clockwise again, as all solids are.
void TZEPTeapot::DrawSpecific(GLenum face, bool draft) {
    glPushMatrix();
    glScalef(-0.25F, -0.25F, -0.25F);
    glRotatef(180, 0, 1, 0);
    glTranslatef(0, 0, -0.75F);
    glEnable(GL_MAP2_VERTEX_3);
    glEnable(GL_AUTO_NORMAL);
    if (!draft && HasTexture()) glEnable(GL_MAP2_TEXTURE_COORD_2);
    if (face != GL_BACK) SendPatches(draft ? GL_LINE : GL_FILL);
    glDisable(GL_MAP2_VERTEX_3);
    glDisable(GL_AUTO_NORMAL);
    glDisable(GL_MAP2_TEXTURE_COORD_2);
    glPopMatrix();
}

void TZEPTeapot::SendPatches(GLenum mode) const {
    for (const TTeapotPatch& patch : TeapotPatches()) {
        const auto part = static_cast<TZEPTeapotParts>(1U << static_cast<unsigned>(patch.Group));
        if (!m_parts.testFlag(part)) continue;
        for (int image = 0; image < patch.Images; ++image)
            SendPatch(TeapotImage(patch, image), m_segments, mode);
    }
}

} // namespace ZEP
