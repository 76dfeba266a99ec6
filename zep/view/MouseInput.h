#pragma once

#include <zep/Export.h>

#include <QFlags>
#include <Qt>

namespace ZEP {

enum TMouseButton { mbLeft, mbRight, mbMiddle };

/// Keys and buttons that are held while the mouse does something.
enum TShift {
    ssShift = 1 << 0,
    ssAlt = 1 << 1,
    ssCtrl = 1 << 2,
    ssLeft = 1 << 3,
    ssRight = 1 << 4,
    ssMiddle = 1 << 5,
    ssDouble = 1 << 6 ///< the press is the second one of a double click
};
Q_DECLARE_FLAGS(TShiftState, TShift)
Q_DECLARE_OPERATORS_FOR_FLAGS(TShiftState)

[[nodiscard]] ZEP_EXPORT TShiftState ToShiftState(Qt::KeyboardModifiers keys,
                                                  Qt::MouseButtons buttons);

/// Whether `button` is one of the three; fills `result` if so.
ZEP_EXPORT bool ToMouseButton(Qt::MouseButton button, TMouseButton& result);

} // namespace ZEP
