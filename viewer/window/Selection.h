#pragma once

#include <zep/scene/Object.h>

#include <QBasicTimer>
#include <QObject>
#include <QPoint>
#include <QPointer>

#include <unordered_map>
#include <vector>

namespace ZEP {

class TZEPPanel;
class TZEPScene;

/// What is selected in the view, kept up to date with the scene, the click that selects whatever
/// the left button does when it drags, and the mark of what it would take.
class TSelection : public QObject {
    Q_OBJECT
public:
    /// \param panel  owns this
    TSelection(TZEPPanel* panel, TZEPScene* scene);

    [[nodiscard]] std::vector<TZEPObject*> Objects() const;
    [[nodiscard]] std::size_t Count() const { return Objects().size(); }
    /// The only one that is selected; null for none and for several.
    [[nodiscard]] TZEPObject* Only() const;
    /// Null: selects nothing.
    void SelectOnly(TZEPObject* object);
    /// These, and no others.
    void Select(const std::vector<TZEPObject*>& objects);
    /// What a click takes, at a place in device pixels: what is near by, where nothing is right
    /// there; null for nothing.
    [[nodiscard]] TZEPObject* ObjectAt(const QPoint& place) const;
    /// The objects are gone.
    void Forget();

Q_SIGNALS:
    /// Once, after any number of changes.
    void Changed();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void Note(TZEPObject* object);
    void Click(const QPoint& place, bool add);

    TZEPPanel* m_panel;
    TZEPScene* m_scene;
    std::unordered_map<TZEPObject*, QPointer<TZEPObject>> m_objects; ///< null: it has gone
    QBasicTimer m_telling;
    QPoint m_press;
};

} // namespace ZEP
