#include <zep/view/Extent.h>

#include <zep/batch/GatheredClass.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Vectors.h>
#include <zep/sheets/Layout.h>
#include <zep/sheets/Viewport.h>

#include <algorithm>
#include <cstdlib>

namespace ZEP {

namespace {

/// Along the axes, between them, and what is up and down in isometric views: (1, 1, 2) and its
/// like.
std::vector<TGLArrayd3> MakeDirections() {
    std::vector<TGLArrayd3> directions;
    for (int x = -2; x <= 2; ++x)
        for (int y = -2; y <= 2; ++y)
            for (int z = -2; z <= 2; ++z) {
                const int largest = std::max({std::abs(x), std::abs(y), std::abs(z)});
                const int sum = std::abs(x) + std::abs(y) + std::abs(z);
                const bool up = largest == 2 && sum == 4 && x != 0 && y != 0 && z != 0;
                if (largest == 1 || up) directions.push_back({1.0 * x, 1.0 * y, 1.0 * z});
            }
    return directions;
}

const std::vector<TGLArrayd3>& AllDirections() {
    static const std::vector<TGLArrayd3> directions = MakeDirections();
    return directions;
}

/// It holds something. OpenGL counts in floats, and multiplies them.
bool CanBeDrawn(const TZEPBounds& box) {
    constexpr double Largest = 1e30;
    for (std::size_t k = 0; k < 3; ++k)
        if (!(box.Min[k] <= box.Max[k] && box.Min[k] >= -Largest && box.Max[k] <= Largest))
            return false;
    return true;
}

bool IsLayout(const TZEPObject& object) {
    return qobject_cast<const TZEPLayout*>(&object);
}

} // namespace

double DiagonalOf(const TZEPBounds& bounds) {
    return Distance(bounds.Min, bounds.Max);
}

bool IsFlat(const TZEPBounds& bounds) {
    constexpr double LeastRise = 1e-6; // of the diagonal
    return bounds.Max[2] - bounds.Min[2] <= LeastRise * DiagonalOf(bounds);
}

void Widen(std::optional<TZEPBounds>& bounds, const std::optional<TZEPBounds>& box) {
    if (!box) return;
    if (!bounds) bounds = box;
    MinBoundsd(bounds->Min, box->Min);
    MaxBoundsd(bounds->Max, box->Max);
}

void TZEPExtent::Add(const TZEPBounds& box) {
    if (!CanBeDrawn(box)) return;
    const bool first = !m_bounds;
    Widen(m_bounds, box);
    const auto& directions = AllDirections();
    for (std::size_t i = 0; i < Directions; ++i) {
        TGLArrayd3 corner;
        for (std::size_t k = 0; k < 3; ++k)
            corner[k] = directions[i][k] < 0 ? box.Min[k] : box.Max[k];
        const double reach = Dotd(directions[i], corner);
        if (!first && !(reach > m_reach[i])) continue;
        m_reach[i] = reach;
        m_farthest[i] = corner;
    }
}

void TZEPExtent::Add(const TZEPExtent& other) {
    for (const TGLArrayd3& corner : other.Corners()) Add(TZEPBounds{corner, corner});
}

void TZEPExtent::Add(TZEPObject& object) {
    if (!Draws(object)) return;
    auto* mesh = qobject_cast<TZEPMesh*>(&object);
    if (!mesh || mesh->Vertexes()->Count() < 2) {
        TZEPBounds box{};
        object.GetAbsoluteSize(box.Min, box.Max);
        return Add(box);
    }
    const TGLMatrixd4 matrix = mesh->GetAbsoluteMatrix();
    for (int i = 0; i < mesh->Vertexes()->Count(); ++i) {
        TGLArrayd3 place = (*mesh->Vertexes())[i].Data();
        Xformd(matrix, place);
        Add(TZEPBounds{place, place});
    }
}

void TZEPExtent::AddVisible(TZEPObject& object) {
    if (!object.Visible() && !IsLayout(object)) return;
    Add(object);
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
        if (TZEPObject& child = *object.GetItem(i); !IsLayout(child)) AddVisible(child);
}

std::vector<TGLArrayd3> TZEPExtent::Corners() const {
    if (!m_bounds) return {};
    return {m_farthest.begin(), m_farthest.end()};
}

bool Draws(const TZEPObject& object) {
    if (qobject_cast<const TZEPColoredObject*>(&object)) return !IsGroup(object);
    if (const auto* layout = qobject_cast<const TZEPLayout*>(&object)) return layout->HasPaper();
    const auto* viewport = qobject_cast<const TZEPViewport*>(&object);
    return viewport && viewport->Scale() > 0;
}

TZEPExtent VisibleExtent(TZEPObject& node) {
    TZEPExtent extent;
    extent.AddVisible(node);
    return extent;
}

} // namespace ZEP
