#pragma once

#include <zep/scene/ViewVolume.h>

#include <vector>

namespace ZEP {

class TZEPObject;

/// Places that arrays of vertexes count from: their floats are coarse far from there. One stands
/// amid most of what there is, others where something lies far off; a few in all.
class TSpots {
public:
    /// None without boxes. A box that is not finite tells nothing.
    explicit TSpots(const std::vector<TZEPBlockBox>& boxes);

    [[nodiscard]] std::size_t Count() const { return m_spots.size(); }
    /// The spot that suits a box.
    [[nodiscard]] std::size_t Of(std::size_t box) const { return m_ofBoxes[box]; }
    [[nodiscard]] const TGLArrayd3& Origin(std::size_t spot) const { return m_spots[spot].Origin; }
    /// That arcs there may stray from their circle in a view of all that is there.
    [[nodiscard]] double Error(std::size_t spot) const;

private:
    struct TSpot {
        TGLArrayd3 Origin;
        TZEPBlockBox Box{};
    };

    void Start(const std::vector<TZEPBlockBox>& samples);
    [[nodiscard]] std::size_t Place(const TZEPBlockBox& box);
    [[nodiscard]] std::size_t Find(const TZEPBlockBox& box);

    std::vector<TSpot> m_spots;
    std::vector<std::size_t> m_ofBoxes;
    double m_reach = 0; ///< what lies farther from a spot gets another one
};

/// Of an object, in the frame that `matrix` leads to; of a text just the place where it begins.
[[nodiscard]] TZEPBlockBox BoxOf(const TZEPObject& object, const TGLMatrixd4& matrix);

} // namespace ZEP
