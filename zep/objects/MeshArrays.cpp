#include <zep/objects/MeshArrays.h>

#include <zep/gl/ClientArrays.h>

#include <algorithm>

namespace ZEP {

namespace {

/// Small enough that a click sends few triangles, large enough that boxes cost little beside them.
constexpr std::size_t BlockCorners = 3 * std::size_t{16};
/// From here on all is worth a look at what is seen.
constexpr std::size_t ManyCorners = 16 * BlockCorners;
/// So many go out by themselves, fewer together with others.
constexpr std::size_t LongRange = 1024;

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
    if (CornerCount() >= ManyCorners) BuildBoxes();
}

void TMeshArrays::BuildBoxes() {
    std::vector<TBoxTree::TBox> boxes((CornerCount() + BlockCorners - 1) / BlockCorners);
    for (std::size_t corner = 0; corner < CornerCount(); ++corner)
        boxes[corner / BlockCorners].Add(m_vertexes[VertexOf(corner)].Point);
    m_boxes.Build(std::move(boxes));
}

std::size_t TMeshArrays::CornerCount() const {
    return IsShared() ? m_corners.size() : m_vertexes.size();
}

std::size_t TMeshArrays::VertexOf(std::size_t corner) const {
    return IsShared() ? m_corners[corner] : corner;
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
    const auto volume = m_boxes.IsEmpty() ? std::nullopt : TZEPViewVolume::OfSight();
    if (volume)
        SendSeen(*volume);
    else
        Send(0, CornerCount());
    // As after single calls, whatever a driver makes of arrays, and whatever was in view.
    const std::size_t last = VertexOf(CornerCount() - 1);
    glNormal3fv(m_vertexes[last].Normal.data());
    if (m_textured) glTexCoord2fv(m_texCoords[last].data());
}

// Short ranges are gathered, since a call costs as much as some hundred corners; none overtakes
// another.
void TMeshArrays::SendSeen(const TZEPViewVolume& volume) const {
    std::vector<std::uint32_t> gathered;
    const auto flush = [&gathered] {
        glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(gathered.size()), GL_UNSIGNED_INT,
                       gathered.data());
        gathered.clear();
    };
    m_boxes.ForEachSeen(volume, [&](std::size_t first, std::size_t endBlock) {
        const std::size_t begin = first * BlockCorners;
        const std::size_t end = std::min(endBlock * BlockCorners, CornerCount());
        if (end - begin >= LongRange) {
            if (!gathered.empty()) flush();
            return Send(begin, end);
        }
        for (std::size_t corner = begin; corner < end; ++corner)
            gathered.push_back(static_cast<std::uint32_t>(VertexOf(corner)));
    });
    if (!gathered.empty()) flush();
}

void TMeshArrays::Send(std::size_t begin, std::size_t end) const {
    const auto count = static_cast<GLsizei>(end - begin);
    if (IsShared())
        glDrawElements(GL_TRIANGLES, count, GL_UNSIGNED_INT, m_corners.data() + begin);
    else
        glDrawArrays(GL_TRIANGLES, static_cast<GLint>(begin), count);
}

} // namespace ZEP
