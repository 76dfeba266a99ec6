#pragma once

#include <zep/converters/rs274d/Sink.h>

namespace ZEP {

/// The coordinate systems of a machine, in millimetres: a programmed coordinate plus `Offset` is
/// the machine's. Offset is the sum of the selected work system, the local offset (G52) and the
/// coordinate offset (G92); all are 0 at the start.
class TRS274DFrames {
public:
    static constexpr int SystemCount = 9; ///< G54 to G59.3

    [[nodiscard]] double Offset(std::size_t axis) const { return m_sum[axis]; }

    void SelectSystem(int system);
    [[nodiscard]] int Selected() const { return m_selected; }
    /// The origin of a system in the machine's coordinates.
    [[nodiscard]] double Origin(int system, std::size_t axis) const {
        return m_origins[static_cast<std::size_t>(system)][axis];
    }
    void SetOrigin(int system, std::size_t axis, double origin);
    /// The origin of a system such that `machine` has the programmed coordinate `programmed` there.
    void SetOriginAt(int system, std::size_t axis, double machine, double programmed);
    void SetLocal(std::size_t axis, double offset);
    /// The coordinate offset such that `machine` has the programmed coordinate `programmed`.
    void SetOffsetAt(std::size_t axis, double machine, double programmed);
    /// That of G92 alone.
    [[nodiscard]] double CoordinateOffset(std::size_t axis) const { return m_offset[axis]; }
    [[nodiscard]] bool HasCoordinateOffset() const { return m_offset != TRS274DPoint(); }
    void ClearOffset();
    /// Without the coordinate offset until it is restored or set again.
    void SuspendOffset();
    void RestoreOffset();

private:
    void Sum();

    std::array<TRS274DPoint, SystemCount> m_origins{};
    TRS274DPoint m_local{};
    TRS274DPoint m_offset{};
    TRS274DPoint m_stored{};
    TRS274DPoint m_sum{};
    int m_selected = 0;
};

} // namespace ZEP
