#pragma once

#include <zep/objects/BoxTree.h>

#include <GL/gl.h>

#include <array>
#include <cstdint>
#include <vector>

namespace ZEP {

/// Triangles as OpenGL reads them from arrays: floats, as which it holds coordinates in any case.
/// They stand in small blocks, as they were added: what the view does not show is not sent.
/// At most 32 bytes for each corner, plus 4 where corners share vertexes.
class TMeshArrays {
public:
    /// A corner, or what corners share.
    struct TVertex {
        TGLArrayf3 Normal;
        TGLArrayf3 Point;
    };
    using TTexCoord = std::array<float, 2>;

    /// \param textured  texture coordinates are given
    explicit TMeshArrays(bool textured) : m_textured(textured) {}

    [[nodiscard]] bool IsTextured() const { return m_textured; }
    void Reserve(std::size_t vertexes, std::size_t sharedCorners);
    /// \name Triangles come corner by corner: each a vertex of its own, or the number of one
    /// @{
    void AddVertex(const TVertex& vertex, const TTexCoord& texCoord);
    void AddCorner(std::uint32_t vertex) { m_corners.push_back(vertex); }
    /// How many vertexes there are.
    [[nodiscard]] std::uint32_t VertexCount() const {
        return static_cast<std::uint32_t>(m_vertexes.size());
    }
    /// All have come.
    void Finish();
    /// @}

    /// Sends what the view shows; the current normal is that of the last corner in any case.
    void Draw() const;

private:
    [[nodiscard]] bool IsShared() const { return !m_corners.empty(); }
    [[nodiscard]] std::size_t CornerCount() const;
    [[nodiscard]] std::size_t VertexOf(std::size_t corner) const;
    void BuildBoxes();
    void Send(std::size_t begin, std::size_t end) const;
    void SendSeen(const TZEPViewVolume& volume) const;

    bool m_textured;
    std::vector<TVertex> m_vertexes;
    std::vector<TTexCoord> m_texCoords;   // as many, or none
    std::vector<std::uint32_t> m_corners; // none: each corner is the next vertex
    TBoxTree m_boxes;                     // of blocks of corners
};

} // namespace ZEP
