#pragma once

#include "viewer/drawing/ViewLook.h"

#include <QObject>

#include <memory>
#include <vector>

class QAction;
class QMenu;
class QWidget;

namespace ZEP {

/// The part of the View menu that chooses how scenes are shown: lights, fog, shading, outlines,
/// background. What the user chose is remembered and holds for all views.
class TViewOptions : public QObject {
    Q_OBJECT
public:
    /// Adds its entries to the menu. \param window  owns this, and has its dialogs
    TViewOptions(QMenu* menu, QWidget* window);

    /// Dresses it from now on.
    void AddView(std::unique_ptr<TDressedView> view);
    /// Other objects are in the scenes now.
    void Apply();
    [[nodiscard]] const TViewLook& Look() const { return m_look; }
    void SetLook(const TViewLook& look);

private:
    QAction* AddFlag(QMenu* menu, const QString& text, bool TViewLook::*flag, const QString& tip);
    void AddFog(QMenu* menu);
    void AddBackground(QMenu* menu);
    void AskForBackground();

    TViewLook m_look = TViewLook::Load();
    std::vector<std::unique_ptr<TDressedView>> m_views;
    QWidget* m_window;
};

} // namespace ZEP
