#pragma once

#include <zep/scene/Geom.h>

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace ZEP {

struct TF3DSChunk;
class TF3DSStream;

/// The tree of a 3DS file's animation, at the first key of each of its nodes.
class TF3DSNodes {
public:
    /// Nodes below more than these are no one's.
    static constexpr int Deepest = 250;

    /// Reads one node: of an object, or of a camera or a light, which only others stand below.
    void ReadNode(TF3DSStream& stream, const TF3DSChunk& chunk);

    /// From the frame of the object of that name to the whole's. None where it has no node, or one
    /// below a camera, a light or itself, whose frames no two programs take alike.
    [[nodiscard]] std::optional<TGLMatrixd4> PlaceOf(const QString& name) const;
    /// Whether something moves from key to key.
    [[nodiscard]] bool IsAnimated() const { return m_animated; }

private:
    struct TNode {
        QString Name;
        int Id = 0;
        int Parent = -1;
        bool IsObject = false;
        TGLArrayd3 Pivot{}, Position{}, Axis{}, Scale{1, 1, 1};
        double Angle = 0; ///< radians about the axis, clockwise
    };

    void ReadPart(TF3DSStream& stream, const TF3DSChunk& chunk, TNode& node);
    /// The first key of a track; none where it has no key.
    template <std::size_t Count>
    [[nodiscard]] std::optional<std::array<double, Count>> ReadTrack(TF3DSStream& stream,
                                                                     const TF3DSChunk& chunk);

    std::vector<TNode> m_nodes;
    QHash<int, std::size_t> m_byId;
    QHash<QString, std::size_t> m_byName; // of objects
    bool m_animated = false;
};

} // namespace ZEP
