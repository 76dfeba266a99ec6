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
    : m_lent(of ? &of->m_frame : &FrameOfNoScene()), m_own(std::exchange(*m_lent, &draws.Frame())) {
}

} // namespace ZEP
