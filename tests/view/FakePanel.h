#pragma once

#include <zep/ZEPClasses.h>
#include <zep/objects/Line.h>
#include <zep/view/MousePanel.h>

#include <gtest/gtest.h>

#include <QPointer>
#include <QStringList>

namespace ZEP {

inline QStringList& operator<<(QStringList& list, const char* text) {
    return list << QString::fromLatin1(text);
}

/// A camera that notes its movements and makes them.
class NotingCamera : public TZEPCamera {
public:
    NotingCamera(TComponent* owner, QStringList& notes) : TZEPCamera(owner), m_notes(notes) {}

    void Store() override { Note("Store"), TZEPCamera::Store(); }
    void Restore() override { Note("Restore"), TZEPCamera::Restore(); }
    void Truck(double x, double y, double z) override { Note("Truck"), TZEPCamera::Truck(x, y, z); }
    void Pan(double a, double b) override { Note("Pan", a, b), TZEPCamera::Pan(a, b); }
    void Orbit(double a, double b) override { Note("Orbit", a, b), TZEPCamera::Orbit(a, b); }
    void Roll(double angle) override { Note("Roll", angle), TZEPCamera::Roll(angle); }
    void FOV(double delta) override { Note("FOV", delta), TZEPCamera::FOV(delta); }
    void Perspective(double f) override { Note("Perspective", f), TZEPCamera::Perspective(f); }
    void Dolly(double f) override { Note("Dolly", f), TZEPCamera::Dolly(f); }
    void Pick(int width, int height, int x, int y, int w, int h) override {
        Note("Pick", width, height, x, y, w, h);
        TZEPCamera::Pick(width, height, x, y, w, h);
    }

private:
    template <class... Values>
    void Note(const char* name, Values... values) {
        QString text = QString::fromLatin1(name);
        ((text += QLatin1Char(' ') + QString::number(values + 0)), ...);
        m_notes << text;
    }

    QStringList& m_notes;
};

/// A panel of 400 by 200 pixels without a window, and a control that handles its mouse.
class FakePanel : public TZEPMousePanel {
public:
    FakePanel() {
        View->SetParentComponent(&Scene);
        View->Position()->SetData(3, -8, 5);
        View->Target()->SetData(0, 1, 0.5);
    }

    virtual ~FakePanel() = default;

    [[nodiscard]] TZEPCamera* Camera() const override { return View; }
    [[nodiscard]] int Width() const override { return 400; }
    [[nodiscard]] int Height() const override { return 200; }
    [[nodiscard]] bool SelectInMouseUp() const override { return SelectsInMouseUp; }
    bool MakeCurrent() override { return HasContext; }
    void RepaintFull() override { Notes << "repaint"; }
    void CaptureMouse() override { Captured = true; }
    void ReleaseCapture() override { Captured = false; }
    void ShowCursor(int index) override { Cursor = index; }
    void ShowRubberBand(const QRect& place) override { Band = place; }
    void HideRubberBand() override { Band = {}; }
    void FireBeforSelect() override { Notes << "befor"; }
    void FireAfterSelect() override { Notes << "after"; }
    void ProcessMessages() override { Notes << "messages"; }

    void Press(int x, int y, TMouseButton button = mbLeft, TShiftState held = ssLeft) {
        Control.MouseDown(*this, button, held, x, y);
    }
    void Move(int x, int y, TShiftState held = ssLeft) { Control.MouseMove(*this, held, x, y); }
    void Release(int x, int y, TMouseButton button = mbLeft, TShiftState held = {}) {
        Control.MouseUp(*this, button, held, x, y);
    }
    /// Notes since the last time.
    QStringList Taken() { return std::exchange(Notes, {}); }

    TZEPScene Scene;
    QStringList Notes;
    QPointer<TZEPCamera> View = new NotingCamera(&Scene, Notes);
    TZEPPanelControl Control;
    bool HasContext = false;
    bool SelectsInMouseUp = false;
    bool Captured = false;
    int Cursor = -1;
    QRect Band;
};

/// All that movements change.
struct ViewState {
    explicit ViewState(const TZEPCamera& camera)
        : Position(camera.GetPosition()), Target(camera.GetTarget()), Offset(camera.ViewOffset()),
          Field(camera.FieldOfView()), Roll(camera.RollAngle()) {}
    bool operator==(const ViewState&) const = default;

    TGLArrayd3 Position, Target, Offset;
    double Field, Roll;
};

} // namespace ZEP
