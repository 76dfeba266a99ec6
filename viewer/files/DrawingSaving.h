#pragma once

#include "viewer/files/PassedOver.h"

#include <span>
#include <vector>

namespace ZEP {

struct TOpenedFile;

/// Writes what was read from files as one drawing (DXF), with what is hidden hidden there, too.
/// Raises `Exception`, also where the name is that of one of the files; an old file then stands.
/// \return  what drawings cannot hold
std::vector<TPassedOver> SaveDrawing(std::span<const TOpenedFile> files, const QString& fileName);

/// What a drawing may be saved as: ends in ".dxf".
[[nodiscard]] bool IsDrawingName(const QString& fileName);

} // namespace ZEP
