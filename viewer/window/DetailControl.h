#pragma once

#include <zep/scene/Geom.h>

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <optional>

namespace ZEP {

class TDocument;
class TZEPPanel;

/// Keeps the view of a large document fluent: while the camera moves, frames show as much of it as
/// fits into a twentieth of a second; once it rests, all.
class TDetailControl : public QObject {
    Q_OBJECT
public:
    /// \param panel  owns the control
    TDetailControl(TZEPPanel* panel, TDocument& document);

    /// What frames show while the camera moves; 1 is all.
    [[nodiscard]] double MovingShare() const { return m_movingShare; }

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct TView {
        TGLArrayd3 Eye, Target;
        double Field;
        bool operator==(const TView&) const = default;
    };

    [[nodiscard]] TView CurrentView() const;
    void BeforeFrame();
    void AfterFrame();

    TZEPPanel* m_panel;
    TDocument* m_document;
    QBasicTimer m_rest;
    QElapsedTimer m_clock;
    std::optional<TView> m_lastView;
    double m_movingShare;
    bool m_moving = false;
};

} // namespace ZEP
