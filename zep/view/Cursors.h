#pragma once

#include <zep/Export.h>

#include <QCursor>

namespace ZEP {

/// \name The application's list of cursors
/// Navigation shows 100 while it rolls, 101 while it orbits, 102 while a rectangle to zoom into is
/// drawn and 103 while it changes the perspective. Until the application sets others they show the
/// directions of the drag.
/// @{
ZEP_EXPORT void SetNavigationCursor(int index, const QCursor& cursor);
/// An arrow for an index that there is not.
[[nodiscard]] ZEP_EXPORT QCursor NavigationCursor(int index);
/// @}

} // namespace ZEP
