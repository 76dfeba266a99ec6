#include <zep/objects/MeshArrays.h>

#include <zep/gl/ClientArrays.h>

#include <algorithm>

namespace ZEP {

namespace {

/// Small enough that a click sends few triangles, large enough that boxes cost little beside them.
constexpr std::size_t BlockCorners = 3 * std::size_t{256};

} // namespace

void TMeshArrays::Reserve(std::size_t vertexes, std::size_t sharedCorners) {
    m_vertexes.reserve(vertexes);
    if (m_textured) m_texCoords.reserve(vertexes);
    m_corners.reserve(sharedCorners);
}

void TMeshArrays::AddVertex(const TVertex& vertex, const TTexCoord& texCoord) {
    m_vertexes.push_back(vertex);
    if (m_textured) m_texCoords.push_back(texCoord);
}

void TMeshArrays::Finish() {
    if (m_corners.size() == m_vertexes.size()) m_corners = {}; // nothing is shared
    m_vertexes.shrink_to_fit();
    m_texCoords.shrink_to_fit();
    m_corners.shrink_to_fit();
    m_blocks.reserve(CornerCount() / BlockCorners + 1);
    for (std::size_t begin = 0; begin < CornerCount(); begin += BlockCorners)
        m_blocks.push_back(Block(begin));
}

std::size_t TMeshArrays::CornerCount() const {
    return IsShared() ? m_corners.size() : m_vertexes.size();
}

std::size_t TMeshArrays::VertexOf(std::size_t corner) const {
    return IsShared() ? m_corners[corner] : corner;
}

TMeshArrays::TBlock TMeshArrays::Block(std::size_t begin) const {
    TBlock block{.Box = {}, .End = std::min(begin + BlockCorners, CornerCount())};
    for (std::size_t corner = begin; corner < block.End; ++corner) {
        const TGLArrayf3& point = m_vertexes[VertexOf(corner)].Point;
        block.Box.Add({point[0], point[1], point[2]});
    }
    return block;
}

void TMeshArrays::Draw() const {
    if (CornerCount() == 0) return;
    const TClientArraysScope arrays{GL_VERTEX_ARRAY, GL_NORMAL_ARRAY};
    const TVertex& first = m_vertexes.front();
    glVertexPointer(3, GL_FLOAT, sizeof(TVertex), first.Point.data());
    glNormalPointer(GL_FLOAT, sizeof(TVertex), first.Normal.data());
    if (m_textured) {
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, 0, m_texCoords.data());
    }
    const auto volume = m_blocks.size() > 1 ? TZEPViewVolume::OfSight() : std::nullopt;
    if (volume)
        SendBlocks(*volume);
    else
        Send(0, CornerCount());
    // As after single calls, whatever a driver makes of arrays, and whatever was in view.
    const std::size_t last = VertexOf(CornerCount() - 1);
    glNormal3fv(m_vertexes[last].Normal.data());
    if (m_textured) glTexCoord2fv(m_texCoords[last].data());
}

// Neighbours go out together: a call for each block would cost more than the blocks that it spares.
void TMeshArrays::SendBlocks(const TZEPViewVolume& volume) const {
    std::size_t begin = 0; // of what is in view up to here
    std::size_t end = 0;
    for (const TBlock& block : m_blocks) {
        const bool seen = volume.Shows(block.Box.Min, block.Box.Max) != TZEPSeen::Nothing;
        if (!seen) {
            Send(begin, end);
            begin = block.End;
        }
        end = block.End;
    }
    Send(begin, end);
}

void TMeshArrays::Send(std::size_t begin, std::size_t end) const {
    if (begin == end) return;
    const auto count = static_cast<GLsizei>(end - begin);
    if (IsShared())
        glDrawElements(GL_TRIANGLES, count, GL_UNSIGNED_INT, m_corners.data() + begin);
    else
        glDrawArrays(GL_TRIANGLES, static_cast<GLint>(begin), count);
}

} // namespace ZEP
