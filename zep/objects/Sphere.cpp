#include <zep/objects/Sphere.h>

#include <zep/framework/Property.h>
#include <zep/objects/Quadric.h>
#include <zep/scene/Frame.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

const TRegisterObject<TZEPSphere> RegisteredSphere;

constexpr float Radius = 0.5;

/// Of the part `turn` of a full turn.
std::array<float, 2> SineAndCosine(double turn) {
    const auto angle = static_cast<float>(turn * 2 * std::numbers::pi);
    return {std::sin(angle), std::cos(angle)};
}

/// The cells of a sphere as GLU sends them, but in one go in place of a strip for each stack, of
/// which a frame of spheres takes a tenth less.
class TSphereCells {
public:
    TSphereCells(int slices, int stacks, bool smooth)
        : m_slices(std::min(slices, MostOfGlu)), m_stacks(std::min(stacks, MostOfGlu)),
          m_smooth(smooth) {}

    void Send() const {
        if (m_slices < 2 || m_stacks < 1) return;
        glBegin(GL_QUADS);
        for (int stack = 0; stack < m_stacks; ++stack)
            for (int slice = 0; slice < m_slices; ++slice) {
                SendCorner(slice + 1, stack, stack + 1);
                SendCorner(slice, stack, stack + 1);
                SendCorner(slice, stack, stack);
                SendCorner(slice + 1, stack, stack);
            }
        glEnd();
    }

private:
    static constexpr int MostOfGlu = 239;

    /// On the unit sphere; counts from the top.
    [[nodiscard]] TGLArrayf3 At(double slice, double stack) const {
        const auto [x, y] = SineAndCosine(slice / m_slices);
        const auto [out, up] = SineAndCosine(stack / m_stacks / 2);
        return {x * out, y * out, up};
    }
    void SendCorner(int slice, int stack, int edge) const {
        const bool isPole = edge == 0 || edge == m_stacks;
        TGLArrayf3 point = At(slice % m_slices, edge);
        if (isPole) point[0] = point[1] = 0;
        // Without `m_smooth` each column of corners has the normal of the cell before it.
        glNormal3fv(m_smooth ? At(slice % m_slices, edge).data()
                             : At(slice - 0.5, stack + 0.5).data());
        glTexCoord2f(1 - static_cast<float>(slice) / static_cast<float>(m_slices),
                     1 - static_cast<float>(edge) / static_cast<float>(m_stacks));
        glVertex3f(point[0] * Radius, point[1] * Radius, point[2] * Radius);
    }

    int m_slices;
    int m_stacks;
    bool m_smooth;
};

} // namespace

void TZEPSphere::SetSmooth(bool smooth) {
    if (smooth != Smooth()) m_lists.Reset();
    TZEPSolid::SetSmooth(smooth);
}

void TZEPSphere::SetSlices(int slices) {
    SetCells(m_slices, slices);
}

void TZEPSphere::SetStacks(int stacks) {
    SetCells(m_stacks, stacks);
}

void TZEPSphere::SetCells(int& field, int count) {
    if (!Change(field, std::min(count, MaxCells))) return;
    m_lists.Reset();
    Invalidate(this);
}

void TZEPSphere::DrawSpecific(GLenum, bool draft) {
    TZEPDrawRun& run = DrawFrame().Run;
    run.OpenSurface();
    const TSharedLists::TSettings settings{1.0 * m_slices, 1.0 * m_stacks, Smooth() ? 1.0 : 0.0};
    m_lists.Draw(typeid(*this), settings, draft, [&] {
        if (run.Waits() && !draft) return TSphereCells(m_slices, m_stacks, Smooth()).Send();
        const TQuadric quadric(draft, Smooth());
        glNormal3f(0, 0, 1); // GLU's flat normals leave the pole with the one that is current
        gluSphere(quadric.Get(), Radius, m_slices, m_stacks);
    });
}

} // namespace ZEP
