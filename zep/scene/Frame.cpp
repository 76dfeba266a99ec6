#include <zep/scene/Frame.h>

#include <zep/scene/SceneInterfaces.h>

#include <utility>

namespace ZEP {

namespace {

TZEPFrame*& FrameOfNoScene() {
    static TZEPFrame own;
    static TZEPFrame* frame = &own;
    return frame;
}

} // namespace

TZEPFrame& TZEPFrame::OfNoScene() {
    return *FrameOfNoScene();
}

TZEPFrameLoan::TZEPFrameLoan(TZEPSceneContext* of, TZEPSceneContext& draws)
    : m_exists(of ? static_cast<const void*>(of) : &FrameOfNoScene()),
      m_lent(of ? &of->m_frame : &FrameOfNoScene()), m_own(std::exchange(*m_lent, &draws.Frame())) {
}

TZEPFrameLoan::~TZEPFrameLoan() {
    if (m_exists) *m_lent = m_own;
}

} // namespace ZEP
