#include <zep/converters/rs274d/Frames.h>

namespace ZEP {

void TRS274DFrames::SelectSystem(int system) {
    m_selected = system;
    Sum();
}

void TRS274DFrames::SetOrigin(int system, std::size_t axis, double origin) {
    m_origins[static_cast<std::size_t>(system)][axis] = origin;
    Sum();
}

void TRS274DFrames::SetOriginAt(int system, std::size_t axis, double machine, double programmed) {
    SetOrigin(system, axis, machine - programmed - m_local[axis] - m_offset[axis]);
}

void TRS274DFrames::SetLocal(std::size_t axis, double offset) {
    m_local[axis] = offset;
    Sum();
}

void TRS274DFrames::SetOffsetAt(std::size_t axis, double machine, double programmed) {
    m_offset[axis] += machine - programmed - m_sum[axis];
    m_stored = m_offset;
    Sum();
}

void TRS274DFrames::ClearOffset() {
    m_stored = {};
    SuspendOffset();
}

void TRS274DFrames::SuspendOffset() {
    m_offset = {};
    Sum();
}

void TRS274DFrames::RestoreOffset() {
    m_offset = m_stored;
    Sum();
}

void TRS274DFrames::Sum() {
    const TRS274DPoint& origin = m_origins[static_cast<std::size_t>(m_selected)];
    for (std::size_t axis = 0; axis < m_sum.size(); ++axis)
        m_sum[axis] = origin[axis] + m_local[axis] + m_offset[axis];
}

} // namespace ZEP
