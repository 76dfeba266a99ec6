#pragma once

#include "viewer/drawing/DrawMeans.h"
#include "viewer/drawing/ViewLook.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

class QAction;
class QActionGroup;
class QMenu;
class QWidget;

namespace ZEP {

/// The part of the View menu that chooses how scenes are shown: lights, shadows, mirrors, ground,
/// fog, shading, outlines, background. What the user chose is remembered and holds for all views.
/// What their rendering contexts cannot do is greyed out, with the reason in its tool tip.
class TViewOptions : public QObject {
    Q_OBJECT
public:
    /// Adds its entries to the menu. \param window  owns this, and has its dialogs
    TViewOptions(QMenu* menu, QWidget* window);

    /// Dresses it from now on.
    void AddView(std::unique_ptr<TDressedView> view);
    /// Other objects are in the scenes now.
    void Apply();
    /// Calls it while no shadows of the view's own are switched on in the objects, which are as
    /// they are stored then.
    void Undressed(const std::function<void()>& call);
    [[nodiscard]] const TViewLook& Look() const { return m_look; }
    void SetLook(const TViewLook& look);

private:
    QAction* AddFlag(QMenu* menu, const QString& text, bool TViewLook::*flag, const QString& tip);
    void AddShadows(QMenu* menu);
    void AddFaces(QMenu* menu);
    void AddSamples(QMenu* menu);
    void AddFog(QMenu* menu);
    void AddChoice(QActionGroup* group, QAction* action, bool isChosen, const QString& tip,
                   const std::function<void(TViewLook&)>& choose);
    void ShowMeans() const;
    void AddBackground(QMenu* menu);
    void AskForBackground();

    TViewLook m_look = TViewLook::Load();
    std::vector<std::unique_ptr<TDressedView>> m_views;
    /// What a context must be able to do for an entry of the menu.
    struct TNeed {
        QAction* Action;
        std::function<QString(const TDrawMeans&)> WhyNo;
    };
    std::vector<TNeed> m_needs;
    QWidget* m_window;
};

} // namespace ZEP
