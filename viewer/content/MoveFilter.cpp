#include "viewer/content/MoveFilter.h"

namespace ZEP {

namespace {

constexpr double ZRounding = 1e-6;

} // namespace

bool TMoveFilter::Shows(const TToolPath& path, int move) const {
    const TToolMove made = path.Move(move);
    if (HiddenKinds[static_cast<std::size_t>(made.Kind)] || HiddenTools.contains(made.Tool))
        return false;
    if (Lines && (made.Line < Lines->first || made.Line > Lines->second)) return false;
    if (!Z) return true;
    const TZEPBounds bounds = path.BoundsOf(move);
    return bounds.Min[2] >= Z->first - ZRounding && bounds.Max[2] <= Z->second + ZRounding;
}

std::shared_ptr<const std::vector<bool>> HiddenObjects(const TToolPath& path,
                                                       const TMoveFilter& filter) {
    if (filter == TMoveFilter()) return nullptr;
    std::vector<bool> hidden(static_cast<std::size_t>(path.ObjectCount()));
    for (int move = 0; move < path.Count(); ++move)
        if (const std::optional<int> object = path.ObjectOf(move))
            hidden[static_cast<std::size_t>(*object)] = !filter.Shows(path, move);
    return std::make_shared<const std::vector<bool>>(std::move(hidden));
}

} // namespace ZEP
