#pragma once

#include <zep/view/Extent.h>

#include <QJsonObject>

#include <optional>

namespace ZEP {

class TToolPath;

/// Keys: min, max. Null where there are none.
[[nodiscard]] QJsonValue BoundsToJson(const std::optional<TZEPBounds>& bounds);

/// Times, lengths, extents, holes and tools of a program; millimetres and seconds.
[[nodiscard]] QJsonObject ProgramToJson(const TToolPath& path);

} // namespace ZEP
