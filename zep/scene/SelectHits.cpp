#include <zep/scene/SelectHits.h>

#include <zep/scene/ForEach.h>

#include <algorithm>
#include <unordered_set>

namespace ZEP {

TZEPSelectHits::TZEPSelectHits(int records, const std::vector<GLuint>& buffer,
                               const std::vector<TZEPObject*>& names)
    : m_records(records) {
    std::size_t at = 0;
    for (int record = 0; record < records && at + 3 <= buffer.size(); ++record) {
        const std::size_t end = std::min(buffer.size(), at + 3 + buffer[at]);
        const GLuint depth = buffer[at + 1];
        for (at += 3; at < end; ++at)
            if (buffer[at] < names.size()) m_hits.push_back({names[buffer[at]], depth});
    }
}

void TZEPSelectHits::KeepWithin(TZEPObject& root) {
    std::unordered_set<const TZEPObject*> there;
    ForEachObject(root, [&there](TZEPObject& object) { there.insert(&object); });
    std::erase_if(m_hits,
                  [&there](const TZEPSelectHit& hit) { return !there.contains(hit.Object); });
}

bool TZEPBestHit::IsBetter(const TZEPSelectHit& hit, double distance) const {
    if (!m_manual) return hit.MinDepth < m_depth;
    if (m_priority <= hit.Object->SelectPriority() && distance < m_distance) return true;
    return !m_name.isEmpty() && hit.Object->Name().contains(m_name);
}

void TZEPBestHit::Offer(const TZEPSelectHit& hit, double distance) {
    if (!IsBetter(hit, distance)) return;
    m_object = hit.Object;
    m_depth = hit.MinDepth;
    m_priority = hit.Object->SelectPriority();
    m_distance = distance;
    m_name = hit.Object->Name();
}

} // namespace ZEP
