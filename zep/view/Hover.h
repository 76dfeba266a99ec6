#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>

#include <QBasicTimer>
#include <QObject>
#include <QPoint>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace ZEP {

class TObjectMark;
class TZEPPanel;

/// Marks what a click would take, while no button is held and the pointer is over a panel. The mark
/// lies over the scene, which is not drawn for it (`TZEPPanel::InvalidateOver`); nothing in the
/// scene changes. One line puts it there:
///
///     new TZEPHover(panel);
///
/// A line is marked as it is, anything else by the edges of its box.
class ZEP_EXPORT TZEPHover : public QObject {
    Q_OBJECT
public:
    /// What a click takes at a place in device pixels from the upper left corner; null for nothing.
    using TFind = std::function<TZEPObject*(const QPoint& place)>;

    /// \param panel  owns this
    explicit TZEPHover(TZEPPanel* panel);
    ~TZEPHover() override;

    /// Where a click takes something else than `TZEPScene::Pick` finds in 4 by 4 pixels.
    void SetFind(TFind find);
    /// What is marked; null for nothing.
    [[nodiscard]] TZEPObject* Object() const { return m_object; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// Something else is marked now, or nothing: null.
    void Changed(ZEP::TZEPObject* object);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void Follow(const std::optional<QPoint>& pointer);
    void Mark(TZEPObject* object);
    [[nodiscard]] TZEPObject* Find(const QPoint& place) const;
    void Draw();

    TZEPPanel* m_panel;
    TFind m_find;
    std::optional<QPoint> m_pointer; ///< none: elsewhere, or a button is held
    QPointer<TZEPObject> m_object;
    std::unique_ptr<TObjectMark> m_mark; ///< null: to be made anew
    QBasicTimer m_looking;
};

} // namespace ZEP
