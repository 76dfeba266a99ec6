#pragma once

#include <zep/converters/rs274d/ToolPath.h>
#include <zep/stock/Stock.h>
#include <zep/stock/Tool.h>

#include <optional>

namespace ZEP {

/// A tool as its name tells it: "D=6", "6mm", "1/4in", "ball", "V 60".
struct TGuessedTool {
    TStockTool Tool;
    bool KnowsDiameter = false; ///< else it is that of a `TStockTool`
};

/// What a path knows of a tool: its diameter where it is stated, else what its name says.
[[nodiscard]] ZEP_CORE_EXPORT TGuessedTool GuessTool(const TPathTool& tool);

/// A block for a path: as wide as what its cutting moves reach, from the highest of them or, where
/// they go below it, from 0 down to a tenth below the lowest. Nothing where nothing is cut.
/// \param tools  of the path
[[nodiscard]] ZEP_CORE_EXPORT std::optional<TStockBlock>
GuessBlock(const TToolPath& path, const std::vector<TStockTool>& tools);

} // namespace ZEP
