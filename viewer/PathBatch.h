#pragma once

#include "framework/Color.h"
#include "scene/Geom.h"

#include <array>
#include <cstdint>
#include <unordered_set>
#include <vector>

#include <GL/gl.h>

namespace ZEP {

class TZEPObject;

/// The lines, arcs and polylines of a tool path as arrays of vertices, which OpenGL takes in a few
/// calls: a million separate objects cannot be drawn at an interactive rate. Arcs become chords
/// that stray from them by less than 1/50,000 of the path's size.
///
/// A part of the path can be drawn: evenly spread pieces of it, so that its form still shows.
class TPathBatch {
public:
    /// Takes over what the children of `root` draw, in its frame.
    /// \param rest  gets those that are of other kinds: they are to draw themselves
    /// \param size  of the path: its diagonal
    void Build(TZEPObject& root, double size, std::vector<TZEPObject*>& rest);
    /// Takes over what these draw that a batch can, in their parent's frame.
    void BuildOf(const std::unordered_set<TZEPObject*>& objects, double size);
    [[nodiscard]] bool IsEmpty() const { return VertexCount() == 0; }
    [[nodiscard]] std::size_t VertexCount() const {
        return m_feeds.size() + m_rapids.size() + m_holes.size();
    }

    /// After what is opaque: smooth lines blend with it.
    /// \param share  of the path that is drawn, above 0; from 1 on all of it
    void Draw(double share) const;
    /// All of it, wide and in the colour of what is selected, over whatever is there.
    void DrawMarks() const;

private:
    struct TVertex {
        std::array<float, 3> Point;
        std::array<std::uint8_t, 4> Color;
    };
    using TVertexes = std::vector<TVertex>;

    class TBuilder;
    void Clear();
    void DrawMark(float width) const;
    void SetRapid(bool fine) const;
    void SetFeed(bool fine) const;
    static void DrawPieces(GLenum mode, const TVertexes& vertexes, double share);

    TVertexes m_feeds, m_rapids; ///< two for each line
    TVertexes m_holes;           ///< one for each point
    float m_feedWidth = 1;
    float m_rapidWidth = 1;
    float m_holeWidth = 1;
};

} // namespace ZEP
