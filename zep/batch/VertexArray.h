#pragma once

#include <zep/batch/BlockEdit.h>
#include <zep/framework/Color.h>
#include <zep/scene/Geom.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include <GL/gl.h>

namespace ZEP {

class TPixelScale;
class TZEPViewVolume;

/// Eight bits for each of red, green, blue and alpha.
using TVertexColor = std::array<std::uint8_t, 4>;

[[nodiscard]] TVertexColor ToVertexColor(TColor color);

/// How much of what there is a frame draws.
struct TDetail {
    double Share = 1;                       ///< above 0; from 1 on everything
    const TZEPViewVolume* Volume = nullptr; ///< in the frame of the vertexes; null: all is seen
    const TPixelScale* Pixels = nullptr;    ///< likewise; null: arcs are drawn as they were stored
};

/// A part of an array.
struct TPlaces {
    std::size_t First = 0;
    std::size_t End = std::numeric_limits<std::size_t>::max();
};

/// Coloured vertexes of lines, triangles or points, which OpenGL takes in a few calls. What is out
/// of view is passed over by boxes of neighbours. A part can be drawn: evenly spread pieces, so
/// that the form still shows.
class TVertexArray {
public:
    /// What comes belongs to that block, not below the one before.
    void StartBlock(std::size_t block) { m_block = block; }
    void Add(const TGLArrayd3& point, const TVertexColor& color);
    /// No more come: memory that is not used goes back.
    void Close();
    [[nodiscard]] std::size_t Count() const { return m_vertexes.size(); }
    /// In the blocks before that one.
    [[nodiscard]] std::size_t CountBefore(std::size_t block) const;
    /// \return  which vertexes others have taken the place of
    std::vector<TReplaced> Replace(const TBlockEdits& edits, const TVertexArray& by);
    /// While a `TClientArraysScope` lives. \param mode  GL_LINES, GL_TRIANGLES or GL_POINTS
    void Draw(GLenum mode, const TDetail& detail, const TPlaces& of = {}) const;
    /// The same of these, in view or not.
    void Draw(GLenum mode, const TPlaces& of) const;

private:
    struct TVertex {
        std::array<float, 3> Point;
        TVertexColor Color;
    };
    /// About neighbours of one block.
    struct TBox {
        std::size_t Block, Count;
        TGLArrayd3 Min, Max;
    };

    void Bind() const;
    void DrawSeen(GLenum mode, const TDetail& detail, const TPlaces& of) const;
    void DrawPieces(GLenum mode, const TDetail& detail, const TPlaces& of) const;

    std::vector<TVertex> m_vertexes;
    std::vector<TBox> m_boxes;
    std::size_t m_block = 0;
};

} // namespace ZEP
