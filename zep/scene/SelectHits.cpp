#include <zep/scene/SelectHits.h>

#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

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

void TZEPSelectHits::SelectAll() {
    // By index: an event may take objects out.
    for (std::size_t i = 0; i < m_hits.size(); ++i)
        if (m_hits[i].Object) m_hits[i].Object->SetSelected(true);
}

void TZEPSelectHits::Forget(const TZEPObject* removed) {
    const auto isRemoved = [removed](const TZEPObject* object) {
        while (object && object != removed) object = object->Parent();
        return object != nullptr;
    };
    for (TZEPSelectHit& hit : m_hits)
        if (isRemoved(hit.Object)) hit.Object = nullptr;
    if (isRemoved(m_best)) m_best = nullptr;
}

TZEPSelectHits::Watch::Watch(TZEPSelectHits& hits, TZEPObject& root) : m_root(root) {
    m_notify.Context = &hits;
    m_notify.Code = [](void* context, TZEPObject* sender, TZEPObjectAction action, const void*) {
        if (action == saRemove) static_cast<TZEPSelectHits*>(context)->Forget(sender);
    };
    m_root.RegisterNotify(m_notify);
}

TZEPSelectHits::Watch::~Watch() {
    m_root.UnregisterNotify(m_notify);
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
