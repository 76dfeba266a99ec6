#include <zep/batch/VertexArray.h>

#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace ZEP {

namespace {

constexpr std::size_t PieceSize = 66; // vertexes that stay together: whole lines and triangles
constexpr std::size_t BoxSize = 24 * PieceSize;

void DrawRange(GLenum mode, std::size_t first, std::size_t end, const TPlaces& of) {
    first = std::max(first, of.First);
    end = std::min(end, of.End);
    if (first < end)
        glDrawArrays(mode, static_cast<GLint>(first), static_cast<GLsizei>(end - first));
}

/// Numbers without a pattern, the same in each frame; 0 for 0. From Knuth's multiplicative hash.
std::size_t Scatter(std::size_t i) {
    return (i * 2654435761U & 0xFFFFFFFFU) >> 16U;
}

bool Shows(const TGLArrayd3& min, const TGLArrayd3& max, const TDetail& detail) {
    return !detail.Volume || detail.Volume->Shows(min, max) != TZEPSeen::Nothing;
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
    if (m_boxes.empty() || m_boxes.back().Block != m_block || m_boxes.back().Count == BoxSize)
        m_boxes.push_back({m_block, 0, point, point});
    TBox& box = m_boxes.back();
    MinBoundsd(box.Min, point);
    MaxBoundsd(box.Max, point);
    ++box.Count;
    m_vertexes.push_back({ToFloats(point), color});
}

std::vector<TReplaced> TVertexArray::Replace(const TBlockEdits& edits, const TVertexArray& by) {
    const std::vector<TReplaced> vertexes =
        ItemsOf(PiecesOf(edits, m_boxes, by.m_boxes), m_boxes, by.m_boxes, &TBox::Count);
    ZEP::Replace(m_vertexes, vertexes, by.m_vertexes);
    ReplacePieces(edits, m_boxes, by.m_boxes);
    return vertexes;
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

std::size_t TVertexArray::CountBefore(std::size_t block) const {
    const auto end = std::ranges::lower_bound(m_boxes, block, {}, &TBox::Block);
    return std::accumulate(m_boxes.begin(), end, std::size_t(0),
                           [](std::size_t count, const TBox& box) { return count + box.Count; });
}

void TVertexArray::Draw(GLenum mode, const TPlaces& of) const {
    if (of.First >= of.End) return;
    Bind();
    DrawRange(mode, 0, m_vertexes.size(), of);
}

void TVertexArray::Draw(GLenum mode, const TDetail& detail, const TPlaces& of) const {
    if (m_vertexes.empty() || of.First >= of.End) return;
    Bind();
    if (detail.Share < 1) return DrawPieces(mode, detail, of);
    DrawSeen(mode, detail, of);
}

void TVertexArray::DrawSeen(GLenum mode, const TDetail& detail, const TPlaces& of) const {
    std::size_t first = 0; // of neighbours that are seen
    std::size_t end = 0;
    for (const TBox& box : m_boxes) {
        const std::size_t start = std::exchange(end, end + box.Count);
        if (Shows(box.Min, box.Max, detail)) continue;
        DrawRange(mode, first, start, of);
        first = end;
    }
    DrawRange(mode, first, end, of);
}

void TVertexArray::DrawPieces(GLenum mode, const TDetail& detail, const TPlaces& of) const {
    const auto pieces = static_cast<std::size_t>(1 / std::max(detail.Share, 1e-3));
    // A share of a half and more would be all by whole pieces.
    const std::size_t size =
        pieces > 1 ? PieceSize : static_cast<std::size_t>(detail.Share * PieceSize / 6) * 6;
    auto box = m_boxes.begin();
    std::size_t boxEnd = box->Count;
    for (std::size_t start = 0, i = 0; start < m_vertexes.size();
         start += pieces * PieceSize, ++i) {
        // What is drawn in rows would show a pattern of even steps.
        const std::size_t first = start + Scatter(i) % pieces * PieceSize;
        if (first >= m_vertexes.size()) break;
        const std::size_t end = std::min(first + size, m_vertexes.size());
        while (boxEnd <= first) boxEnd += (++box)->Count;
        bool shows = Shows(box->Min, box->Max, detail);
        while (boxEnd < end) {
            boxEnd += (++box)->Count;
            shows = shows || Shows(box->Min, box->Max, detail);
        }
        if (shows) DrawRange(mode, first, end, of);
    }
}

} // namespace ZEP
