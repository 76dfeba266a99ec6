#pragma once

#include <QCursor>

namespace ZEP {

/// \name The application's list of cursors
/// Navigation shows 100 while it rolls, 101 while it orbits and 103 while it changes the
/// perspective. Until the application sets others they show the directions of the drag.
/// @{
void SetNavigationCursor(int index, const QCursor& cursor);
/// An arrow for an index that there is not.
[[nodiscard]] QCursor NavigationCursor(int index);
/// @}

} // namespace ZEP
