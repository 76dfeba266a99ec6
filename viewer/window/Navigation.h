#pragma once

#include <zep/view/MousePresets.h>
#include <zep/view/PanelControl.h>

#include <QObject>

#include <map>

class QAction;
class QMainWindow;
class QMenu;

namespace ZEP {

class TZEPPanel;

/// What the mouse does in the view: one of the presets, which is remembered, and what each button
/// and the wheel do besides, chosen in a menu, in a tool bar, or by keys. A letter is for the left
/// button, with Shift for the right one, with Alt and Shift for the middle one.
class TNavigation : public QObject {
    Q_OBJECT
public:
    enum TButton : unsigned char { Left, Right, Middle, Wheel };

    /// Adds the menu "&Mouse" and the tool bar. \param window  owns this
    TNavigation(QMainWindow* window, TZEPPanel* panel);

    [[nodiscard]] TZEPMouseMode Mode(TButton button) const;
    [[nodiscard]] TZEPMousePreset Preset() const { return m_preset; }
    void SetPreset(TZEPMousePreset preset);
    /// What is flat is seen from above now, or no longer: drags shift it then, unless the mouse is
    /// as before.
    void SetFlatView(bool flat);
    /// The next drag with the left button draws the rectangle that is to fill the view.
    void StartZoomWindow();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QMenu* MenuOf(TButton button, const QString& title);
    QMenu* PresetMenu();
    void AddOptions(QMenu* menu);
    void SetMode(TButton button, TZEPMouseMode mode);
    void ShowModes();
    void EndZoomWindow();

    QMainWindow* m_window;
    TZEPPanel* m_panel;
    TZEPMousePreset m_preset = TZEPMousePreset::Cad;
    bool m_flat = false;
    bool m_zooms = false; ///< a rectangle to zoom into is waited for, or drawn
    std::map<TButton, std::map<TZEPMouseMode, QAction*>> m_modes;
    std::map<TZEPMousePreset, QAction*> m_presets;
    QAction* m_zoomWindow = nullptr;
};

} // namespace ZEP
