#pragma once

#include <QString>

#include <optional>

namespace ZEP {

class TZEPObject;

/// The line of its program that a tool path object came from, counted from 1.
[[nodiscard]] std::optional<int> ProgramLineOf(const TZEPObject& object);

/// Along the object, in the scene's unit; none for what is no line, arc or polyline.
[[nodiscard]] std::optional<double> LengthOf(TZEPObject& object);

/// What it is, for the status line: class, ident (of a tool path its program line), position and
/// length.
[[nodiscard]] QString Describe(TZEPObject& object);

} // namespace ZEP
