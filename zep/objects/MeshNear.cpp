#include <zep/objects/BoxTree.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <array>

// Which faces of a mesh stand somewhere.

namespace ZEP {

namespace {

constexpr int BlockFaces = 32;

} // namespace

std::shared_ptr<const TBoxTree> TZEPMesh::BlocksOfFaces() const {
    if (m_kept.Blocks) return m_kept.Blocks;
    std::vector<TBoxTree::TBox> boxes(
        static_cast<std::size_t>((m_faces.Count() + BlockFaces - 1) / BlockFaces));
    for (int i = 0; i < m_faces.Count(); ++i) {
        const TZEPFace3CI& face = m_faces[i];
        if (!HasCorners(face)) continue;
        for (const int corner : {face.A(), face.B(), face.C()})
            boxes[static_cast<std::size_t>(i / BlockFaces)].Add(
                ToFloats(m_vertexes[corner].Data()));
    }
    auto tree = std::make_shared<TBoxTree>();
    tree->Build(std::move(boxes));
    m_kept.Blocks = std::move(tree);
    return m_kept.Blocks;
}

void TZEPMesh::ForEachFaceIn(
    const std::function<bool(const TGLArrayd3& min, const TGLArrayd3& max)>& reaches,
    const std::function<void(int face)>& visit) const {
    const std::shared_ptr<const TBoxTree> blocks = BlocksOfFaces(); // `visit` may change the mesh
    const auto meets = [&](const TBoxTree::TBox& box) {
        return box.Min[0] <= box.Max[0] && reaches(ToDoubles(box.Min), ToDoubles(box.Max));
    };
    blocks->ForEachMeeting(meets, [&](std::size_t block) {
        const int first = static_cast<int>(block) * BlockFaces;
        for (int i = first; i < std::min(first + BlockFaces, m_faces.Count()); ++i)
            if (HasCorners(m_faces[i])) visit(i);
    });
}

} // namespace ZEP
