#include <zep/appearance/materials/Material.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Scene.h>

#include <algorithm>
#include <bit>
#include <map>

// What a mesh is full of, where it is closed.

namespace ZEP {

namespace {

/// The last steps of SplitMix64 (G. Steele and others, "Fast splittable pseudorandom number
/// generators", 2014), which spread each bit over all.
std::uint64_t Mixed(std::uint64_t bits) {
    bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBU;
    return bits ^ (bits >> 31U);
}

std::uint64_t NumberOf(const TGLArrayd3& place) {
    std::uint64_t number = 0;
    for (const double part : place)
        number = Mixed(number + 0x9E3779B97F4A7C15U + std::bit_cast<std::uint64_t>(part + 0.0));
    return number;
}

/// That of the same edge the other way round takes it back.
std::uint64_t EdgeNumber(std::uint64_t from, std::uint64_t to) {
    return Mixed(3 * from + to) - Mixed(3 * to + from);
}

} // namespace

// The edges are not searched for: their numbers add up to nothing where each has its counterpart,
// and else to something, but once in 2^64 times. A million faces take some 60 ms.
bool TZEPMesh::IsClosed() const {
    std::vector<std::uint64_t> numbers;
    numbers.reserve(static_cast<std::size_t>(m_vertexes.Count()));
    for (int i = 0; i < m_vertexes.Count(); ++i) numbers.push_back(NumberOf(m_vertexes[i].Data()));
    std::uint64_t sum = 0;
    for (int i = 0; i < m_faces.Count(); ++i) {
        const TZEPFace3CI& face = m_faces[i];
        if (!HasCorners(face)) continue;
        const auto number = [&](int corner) { return numbers[static_cast<std::size_t>(corner)]; };
        sum += EdgeNumber(number(face.A()), number(face.B())) +
               EdgeNumber(number(face.B()), number(face.C())) +
               EdgeNumber(number(face.C()), number(face.A()));
    }
    return sum == 0 && m_faces.Count() > 0;
}

TZEPMaterial* TZEPMesh::SolidMaterial() {
    if (!m_kept.IsClosed) m_kept.IsClosed = IsClosed();
    if (!*m_kept.IsClosed) return nullptr;
    if (!UsesLibrary()) return &DrawnMaterial();
    std::map<int, int> counts;
    for (const TRun& run : Runs()) {
        if (!SceneContext()->LibraryMaterial(run.Material)) return nullptr; // these are not drawn
        counts[run.Material] += run.Last - run.First + 1;
    }
    const auto most = std::ranges::max_element(counts, {}, &std::pair<const int, int>::second);
    return SceneContext()->LibraryMaterial(most->first);
}

} // namespace ZEP
