#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPoint>

#include <unordered_set>
#include <vector>

namespace ZEP {

class TZEPObject;
class TZEPPanel;
class TZEPScene;

/// What is selected in the view, kept up to date with the scene, and the click that selects
/// whatever the left button does when it drags.
class TSelection : public QObject {
    Q_OBJECT
public:
    /// \param panel  owns this
    TSelection(TZEPPanel* panel, TZEPScene* scene);

    [[nodiscard]] std::vector<TZEPObject*> Objects() const;
    [[nodiscard]] std::size_t Count() const { return m_objects.size(); }
    /// The only one that is selected; null for none and for several.
    [[nodiscard]] TZEPObject* Only() const;
    /// Null: selects nothing.
    void SelectOnly(TZEPObject* object);
    /// These, and no others.
    void Select(const std::vector<TZEPObject*>& objects);
    /// The objects are gone.
    void Forget();

Q_SIGNALS:
    /// Once, after any number of changes.
    void Changed();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void Note(TZEPObject* object);
    void Click(int x, int y, bool add);
    [[nodiscard]] TZEPObject* ObjectAt(int x, int y) const;

    TZEPPanel* m_panel;
    TZEPScene* m_scene;
    std::unordered_set<TZEPObject*> m_objects;
    QBasicTimer m_telling;
    QPoint m_press;
};

} // namespace ZEP
