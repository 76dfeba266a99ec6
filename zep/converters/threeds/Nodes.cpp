#include <zep/converters/threeds/Nodes.h>

#include <zep/converters/threeds/Ids.h>
#include <zep/converters/threeds/Stream.h>

#include <numbers>

namespace ZEP {

namespace {

constexpr int SplineNumbers = 5; // of a key, each with a bit that tells whether it is there

} // namespace

void TF3DSNodes::ReadNode(TF3DSStream& stream, const TF3DSChunk& chunk) {
    TNode node;
    node.Id = static_cast<int>(m_nodes.size());
    node.IsObject = chunk.Id == idObjectNode;
    stream.ReadChildren(chunk, [&](const TF3DSChunk& child) { ReadPart(stream, child, node); });
    const std::size_t index = m_nodes.size();
    if (!m_byId.contains(node.Id)) m_byId.insert(node.Id, index);
    if (node.IsObject && !m_byName.contains(node.Name)) m_byName.insert(node.Name, index);
    m_nodes.push_back(std::move(node));
}

void TF3DSNodes::ReadPart(TF3DSStream& stream, const TF3DSChunk& chunk, TNode& node) {
    switch (chunk.Id) {
    case idNodeId:
        node.Id = stream.Read<std::uint16_t>(chunk);
        return;
    case idNodeHeader:
        node.Name = stream.ReadName(chunk);
        static_cast<void>(stream.Read<std::uint32_t>(chunk)); // flags
        node.Parent = stream.Read<std::int16_t>(chunk);
        return;
    case idPivot:
        for (double& value : node.Pivot) value = static_cast<double>(stream.ReadFloat(chunk));
        return;
    case idPositionTrack:
        node.Position = ReadTrack<3>(stream, chunk).value_or(node.Position);
        return;
    case idScaleTrack:
        node.Scale = ReadTrack<3>(stream, chunk).value_or(node.Scale);
        return;
    case idRotationTrack:
        if (const auto key = ReadTrack<4>(stream, chunk)) {
            node.Angle = (*key)[0];
            node.Axis = {(*key)[1], (*key)[2], (*key)[3]};
        }
        return;
    default:
        return;
    }
}

template <std::size_t Count>
std::optional<std::array<double, Count>> TF3DSNodes::ReadTrack(TF3DSStream& stream,
                                                               const TF3DSChunk& chunk) {
    static_cast<void>(stream.Read<std::uint16_t>(chunk)); // flags
    static_cast<void>(stream.Read<std::uint64_t>(chunk)); // of no use
    const auto keys = stream.Read<std::uint32_t>(chunk);
    if (keys == 0) return {};
    if (keys > 1) m_animated = true;
    static_cast<void>(stream.Read<std::uint32_t>(chunk)); // its frame
    const auto spline = stream.Read<std::uint16_t>(chunk);
    for (int bit = 0; bit < SplineNumbers; ++bit)
        if (spline >> bit & 1) static_cast<void>(stream.Read<float>(chunk));
    std::array<double, Count> key{};
    for (double& value : key) value = static_cast<double>(stream.ReadFloat(chunk));
    return key;
}

std::optional<TGLMatrixd4> TF3DSNodes::PlaceOf(const QString& name) const {
    const auto found = m_byName.constFind(name);
    if (found == m_byName.cend()) return {};
    std::vector<const TNode*> chain{&m_nodes[*found]};
    while (chain.back()->Parent != -1) {
        const auto parent = m_byId.constFind(chain.back()->Parent);
        if (parent == m_byId.cend()) break; // its root
        chain.push_back(&m_nodes[*parent]);
        if (!chain.back()->IsObject || chain.size() > Deepest) return {};
    }
    TGLMatrixd4 place = idd;
    for (auto node = chain.rbegin(); node != chain.rend(); ++node) {
        Translatedv((*node)->Position, place);
        const auto& [x, y, z] = (*node)->Axis;
        if ((*node)->Axis != zero3d)
            Rotated(-(*node)->Angle * 180 / std::numbers::pi, x, y, z, place);
        Scaledv((*node)->Scale, place);
    }
    const auto& [x, y, z] = chain.front()->Pivot;
    Translatedv({-x, -y, -z}, place);
    return place;
}

} // namespace ZEP
