#pragma once

#include <zep/scene/ViewVolume.h>

#include <vector>

namespace ZEP {

class TZEPObject;

/// Places that arrays of vertexes count from: their floats are coarse far from there. One stands
/// amid most of what there is, others where something lies far off; a few in all.
class TSpots {
public:
    TSpots() = default;
    /// Amid the boxes; none without any. A box that is not finite tells nothing.
    explicit TSpots(const std::vector<TZEPBlockBox>& boxes);

    [[nodiscard]] std::size_t Count() const { return m_spots.size(); }
    /// The spot that suits a box, a new one where none does. Some must be there.
    [[nodiscard]] std::size_t Place(const TZEPBlockBox& box);
    /// There would have been need of more spots.
    [[nodiscard]] bool AreTooFew() const { return m_tooFew; }
    [[nodiscard]] const TGLArrayd3& Origin(std::size_t spot) const { return m_spots[spot].Origin; }
    /// That arcs there may stray from their circle in a view of all that was placed there.
    [[nodiscard]] double Error(std::size_t spot) const;

private:
    struct TSpot {
        TGLArrayd3 Origin;
        TZEPBlockBox Box{};
    };

    [[nodiscard]] std::size_t Find(const TZEPBlockBox& box);

    std::vector<TSpot> m_spots;
    double m_reach = 0; ///< what lies farther from a spot gets another one
    bool m_tooFew = false;
};

/// Of an object, in the frame that `matrix` leads to; of a text just the place where it begins.
[[nodiscard]] TZEPBlockBox BoxOf(const TZEPObject& object, const TGLMatrixd4& matrix);

} // namespace ZEP
