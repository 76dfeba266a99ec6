#pragma once

#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ZEP {

/// Boxes about the items of a row, about each eight of these boxes, and so on: what of the row a
/// view shows is found in few steps.
class TBoxTree {
public:
    struct TBox {
        TGLArrayf3 Min{Most, Most, Most}; ///< beyond `Max`: seen nowhere
        TGLArrayf3 Max{-Most, -Most, -Most};

        /// Widens it to a point; what is no number changes nothing.
        void Add(const TGLArrayf3& point) {
            TBox box;
            box.Min = box.Max = point;
            Add(box);
        }
        void Add(const TBox& other) {
            for (std::size_t k = 0; k < 3; ++k) {
                if (other.Min[k] < Min[k]) Min[k] = other.Min[k];
                if (other.Max[k] > Max[k]) Max[k] = other.Max[k];
            }
        }
    };

    [[nodiscard]] bool IsEmpty() const { return m_levels.empty(); }
    /// \param items  their boxes, in the order of the row
    void Build(std::vector<TBox> items) {
        m_levels.clear();
        if (items.empty()) return;
        m_levels.push_back(std::move(items));
        while (m_levels.back().size() > 1) m_levels.push_back(Above(m_levels.back()));
    }
    /// Calls `visit(first, end)` with the items whose boxes the volume shows, in their order, where
    /// all neighbours are shown some at a time.
    template <class Visit>
    void ForEachSeen(const TZEPViewVolume& volume, Visit&& visit) const {
        if (!IsEmpty()) VisitSeen(volume, m_levels.size() - 1, 0, visit);
    }

    /// Calls `visit(item)` with those of which `meets(box)` is true, as it is of all boxes about
    /// them.
    template <class Meets, class Visit>
    void ForEachMeeting(const Meets& meets, const Visit& visit) const {
        if (!IsEmpty()) VisitMeeting(meets, m_levels.size() - 1, 0, visit);
    }

private:
    static constexpr float Most = 3e38F;
    static constexpr std::size_t Fan = 8;

    static std::vector<TBox> Above(const std::vector<TBox>& below) {
        std::vector<TBox> boxes((below.size() + Fan - 1) / Fan);
        for (std::size_t i = 0; i < below.size(); ++i) boxes[i / Fan].Add(below[i]);
        return boxes;
    }
    static TZEPSeen Seen(const TZEPViewVolume& volume, const TBox& box) {
        return volume.Shows({box.Min[0], box.Min[1], box.Min[2]},
                            {box.Max[0], box.Max[1], box.Max[2]});
    }
    template <class Visit>
    void VisitSeen(const TZEPViewVolume& volume, std::size_t level, std::size_t number,
                   Visit& visit) const {
        const TZEPSeen seen = Seen(volume, m_levels[level][number]);
        if (seen == TZEPSeen::Nothing) return;
        if (seen == TZEPSeen::Part && level > 0) {
            const std::size_t end = std::min((number + 1) * Fan, m_levels[level - 1].size());
            for (std::size_t i = number * Fan; i < end; ++i) VisitSeen(volume, level - 1, i, visit);
            return;
        }
        std::size_t width = 1;
        for (std::size_t i = 0; i < level; ++i) width *= Fan;
        visit(number * width, std::min((number + 1) * width, m_levels.front().size()));
    }

    template <class Meets, class Visit>
    void VisitMeeting(const Meets& meets, std::size_t level, std::size_t number,
                      const Visit& visit) const {
        if (!meets(m_levels[level][number])) return;
        if (level == 0) return visit(number);
        const std::size_t end = std::min((number + 1) * Fan, m_levels[level - 1].size());
        for (std::size_t i = number * Fan; i < end; ++i) VisitMeeting(meets, level - 1, i, visit);
    }

    std::vector<std::vector<TBox>> m_levels; // from the items up to one box
};

} // namespace ZEP
