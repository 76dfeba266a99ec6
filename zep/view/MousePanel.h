#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <QRect>

#include <functional>

namespace ZEP {

class TZEPCamera;

/// What a rectangle that is drawn over a view is for.
enum class TZEPBand {
    Plain,
    Inside, ///< selects what lies wholly inside
    Touched ///< selects what it touches
};

/// What the mouse control asks of the panel whose mouse it handles. Sizes and places are device
/// pixels, counted from the upper left corner.
class ZEP_EXPORT TZEPMousePanel {
public:
    [[nodiscard]] virtual TZEPCamera* Camera() const = 0;
    [[nodiscard]] virtual int Width() const = 0;
    [[nodiscard]] virtual int Height() const = 0;
    [[nodiscard]] QSize Size() const { return {Width(), Height()}; }
    [[nodiscard]] virtual bool SelectInMouseUp() const = 0;

    /// OpenGL draws in the panel from now on; false where it cannot.
    virtual bool MakeCurrent() = 0;
    /// What was made current is not needed any more.
    virtual void DoneCurrent() {}
    /// Calls what draws in the panel to find something. What that throws does not go on from here.
    /// \return false where the panel cannot draw, something was thrown, or the panel has gone
    virtual bool TryFind(const std::function<void()>& find) {
        find();
        return true;
    }
    /// A frame is to come, in full quality whether a button is held or not.
    virtual void RepaintFull() = 0;
    /// The mouse belongs to the panel until it is released.
    virtual void CaptureMouse() = 0;
    virtual void ReleaseCapture() = 0;
    /// Cursor `index` of the application's list; -1: the panel's own again.
    virtual void ShowCursor(int index) = 0;
    virtual void ShowRubberBand(const QRect& place) = 0;
    /// The same for what it is for, where the panel has looks of its own for that.
    virtual void ShowBand(const QRect& place, TZEPBand band) {
        static_cast<void>(band);
        ShowRubberBand(place);
    }
    virtual void HideRubberBand() = 0;
    /// The view turns about that absolute point.
    virtual void ShowPivot(const TGLArrayd3& point) { static_cast<void>(point); }
    virtual void HidePivot() {}
    virtual void FireBeforSelect() = 0;
    virtual void FireAfterSelect() = 0;
    /// What waits for the event loop is done, but for input.
    virtual void ProcessMessages() = 0;

protected:
    ~TZEPMousePanel() = default;
};

} // namespace ZEP
