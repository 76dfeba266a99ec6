#include <zep/objects/Sphere.h>

#include <zep/framework/Property.h>
#include <zep/objects/DisplayLists.h>
#include <zep/objects/Quadric.h>

#include <map>
#include <tuple>

namespace ZEP {

namespace {

const TRegisterObject<TZEPSphere> RegisteredSphere;

constexpr double Radius = 0.5;

using TSphereKey = std::tuple<int, int, bool, bool>;

/// The list of all spheres of that look; it goes when the last of them does. Ten thousand spheres
/// of 20 by 20 cells with a list each would hold 250 MB (bench/SolidsBench.cpp).
std::shared_ptr<TDisplayList> SharedList(const TSphereKey& key) {
    static std::map<TSphereKey, std::weak_ptr<TDisplayList>> lists;
    std::erase_if(lists, [](const auto& entry) { return entry.second.expired(); });
    std::weak_ptr<TDisplayList>& entry = lists[key];
    std::shared_ptr<TDisplayList> list = entry.lock();
    if (!list) entry = list = std::make_shared<TDisplayList>();
    return list;
}

} // namespace

TZEPSphere::~TZEPSphere() = default;

void TZEPSphere::SetSmooth(bool smooth) {
    if (smooth != Smooth()) m_lists = {};
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
    m_lists = {};
    Invalidate(this);
}

void TZEPSphere::DrawSpecific(GLenum, bool draft) {
    std::shared_ptr<TDisplayList>& list = m_lists[draft ? 1 : 0];
    if (!list) list = SharedList({m_slices, m_stacks, Smooth(), draft});
    list->Draw([&] {
        const TQuadric quadric(draft, Smooth());
        glNormal3f(0, 0, 1); // GLU's flat normals leave the pole with the one that is current
        gluSphere(quadric.Get(), Radius, m_slices, m_stacks);
    });
}

} // namespace ZEP
