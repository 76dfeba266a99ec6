#pragma once

#include <zep/converters/rs274d/ToolPath.h>

#include <array>
#include <memory>
#include <optional>
#include <set>
#include <utility>

namespace ZEP {

/// Which moves of a program are shown: those that pass all of it.
struct TMoveFilter {
    template <class T>
    using TRange = std::optional<std::pair<T, T>>; ///< from the first to the second, or all

    std::array<bool, ToolMoveKinds> HiddenKinds{};
    std::set<std::size_t> HiddenTools{}; ///< in `TToolPath::Tools`
    TRange<double> Z{};                  ///< moves that lie within
    TRange<qint64> Lines{};

    bool operator==(const TMoveFilter&) const = default;
    [[nodiscard]] bool Shows(const TToolPath& path, int move) const;
};

/// For `TZEPBatch::SetHiddenChildren` of the root of the moves; null where all are shown.
[[nodiscard]] std::shared_ptr<const std::vector<bool>> HiddenObjects(const TToolPath& path,
                                                                     const TMoveFilter& filter);

} // namespace ZEP
