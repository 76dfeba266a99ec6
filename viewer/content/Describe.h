#pragma once

#include <QString>

#include <optional>

namespace ZEP {

class TToolPath;
class TZEPObject;

/// The line of its program that a tool path object came from, counted from 1.
[[nodiscard]] std::optional<int> ProgramLineOf(const TZEPObject& object);

/// What it is, for the status line: kind, name (of a tool path its program line), layer, block,
/// line type, text, radius, length and area, or size, and place. \param unit  of the scene
[[nodiscard]] QString Describe(TZEPObject& object, const QString& unit);

/// Where a tool path has come to, for the status line: line, kind of move, position, feed and tool.
/// \param fraction  of the move, that is done
[[nodiscard]] QString Describe(const TToolPath& path, int move, double fraction);

/// Hours, minutes and seconds.
[[nodiscard]] QString TimeText(double seconds);

} // namespace ZEP
