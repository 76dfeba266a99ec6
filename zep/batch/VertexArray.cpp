#include <zep/batch/VertexArray.h>

#include <zep/framework/Property.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr std::size_t PieceSize = 66; // vertexes that stay together: whole lines and triangles
constexpr std::size_t BlockSize = 24 * PieceSize;

void DrawRange(GLenum mode, std::size_t first, std::size_t end) {
    if (first < end)
        glDrawArrays(mode, static_cast<GLint>(first), static_cast<GLsizei>(end - first));
}

/// Numbers without a pattern, the same in each frame; 0 for 0. From Knuth's multiplicative hash.
std::size_t Scatter(std::size_t i) {
    return (i * 2654435761U & 0xFFFFFFFFU) >> 16U;
}

} // namespace

TVertexColor ToVertexColor(TColor color) {
    const TGLColor parts = ToGLColor(color, 1);
    TVertexColor bytes{};
    std::transform(parts.begin(), parts.end(), bytes.begin(),
                   [](float part) { return static_cast<std::uint8_t>(std::lround(part * 255)); });
    return bytes;
}

void TVertexArray::Add(const TGLArrayd3& point, const TVertexColor& color) {
    if (m_vertexes.size() % BlockSize == 0) m_blocks.push_back({point, point});
    MinBoundsd(m_blocks.back().Min, point);
    MaxBoundsd(m_blocks.back().Max, point);
    m_vertexes.push_back({ToFloats(point), color});
}

void TVertexArray::Close() {
    if (m_vertexes.capacity() > m_vertexes.size() + m_vertexes.size() / 8)
        m_vertexes.shrink_to_fit();
}

void TVertexArray::Bind() const {
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(TVertex), m_vertexes.front().Point.data());
    glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(TVertex), m_vertexes.front().Color.data());
}

void TVertexArray::Draw(GLenum mode, std::size_t first, std::size_t end) const {
    if (first >= end) return;
    Bind();
    DrawRange(mode, first, end);
}

void TVertexArray::Draw(GLenum mode, const TDetail& detail) const {
    if (m_vertexes.empty()) return;
    Bind();
    if (detail.Share < 1) return DrawPieces(mode, detail);
    DrawBlocks(mode, detail);
}

bool TVertexArray::Shows(std::size_t block, const TDetail& detail) const {
    if (!detail.Volume) return true;
    return detail.Volume->Shows(m_blocks[block].Min, m_blocks[block].Max) != TZEPSeen::Nothing;
}

void TVertexArray::DrawBlocks(GLenum mode, const TDetail& detail) const {
    std::size_t first = 0; // of neighbours that are seen
    for (std::size_t block = 0; block < m_blocks.size(); ++block) {
        if (Shows(block, detail)) continue;
        DrawRange(mode, first, block * BlockSize);
        first = (block + 1) * BlockSize;
    }
    DrawRange(mode, first, m_vertexes.size());
}

void TVertexArray::DrawPieces(GLenum mode, const TDetail& detail) const {
    const auto pieces = static_cast<std::size_t>(1 / std::max(detail.Share, 1e-3));
    // A share of a half and more would be all by whole pieces.
    const std::size_t size =
        pieces > 1 ? PieceSize : static_cast<std::size_t>(detail.Share * PieceSize / 6) * 6;
    std::size_t known = m_blocks.size(); // the block whose answer is at hand
    bool shows = false;
    for (std::size_t start = 0, i = 0; start < m_vertexes.size();
         start += pieces * PieceSize, ++i) {
        // What is drawn in rows would show a pattern of even steps.
        const std::size_t first = start + Scatter(i) % pieces * PieceSize;
        if (first >= m_vertexes.size()) break;
        if (Change(known, first / BlockSize)) shows = Shows(known, detail);
        if (shows) DrawRange(mode, first, std::min(first + size, m_vertexes.size()));
    }
}

} // namespace ZEP
