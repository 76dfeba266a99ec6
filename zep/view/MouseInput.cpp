#include <zep/view/MouseInput.h>

namespace ZEP {

TShiftState ToShiftState(Qt::KeyboardModifiers keys, Qt::MouseButtons buttons) {
    TShiftState state;
    state.setFlag(ssShift, keys.testFlag(Qt::ShiftModifier));
    state.setFlag(ssAlt, keys.testFlag(Qt::AltModifier));
    state.setFlag(ssCtrl, keys.testFlag(Qt::ControlModifier));
    state.setFlag(ssLeft, buttons.testFlag(Qt::LeftButton));
    state.setFlag(ssRight, buttons.testFlag(Qt::RightButton));
    state.setFlag(ssMiddle, buttons.testFlag(Qt::MiddleButton));
    return state;
}

bool ToMouseButton(Qt::MouseButton button, TMouseButton& result) {
    if (button != Qt::LeftButton && button != Qt::RightButton && button != Qt::MiddleButton)
        return false;
    result = button == Qt::LeftButton ? mbLeft : button == Qt::RightButton ? mbRight : mbMiddle;
    return true;
}

} // namespace ZEP
