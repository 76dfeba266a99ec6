#include <zep/scene/Kept.h>

namespace ZEP {

void TZEPKept::Leave() {
    if (!m_list) return;
    (m_older ? m_older->m_newer : m_list->m_oldest) = m_newer;
    (m_newer ? m_newer->m_older : m_list->m_newest) = m_older;
    m_older = m_newer = nullptr;
    m_list = nullptr;
}

TZEPKeptList::~TZEPKeptList() {
    while (m_newest) m_newest->Leave();
}

void TZEPKeptList::Use(TZEPKept& kept) {
    kept.m_frame = m_frame;
    if (m_newest == &kept) return;
    kept.Leave();
    kept.m_list = this;
    kept.m_older = m_newest;
    (m_newest ? m_newest->m_newer : m_oldest) = &kept;
    m_newest = &kept;
}

void TZEPKeptList::NextFrame() {
    ++m_frame;
    while (m_oldest && m_frame - m_oldest->m_frame > LongTime) {
        TZEPKept& idle = *m_oldest;
        idle.Leave();
        idle.GiveBack();
    }
}

} // namespace ZEP
