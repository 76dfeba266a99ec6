#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/view/Dimension.h>
#include <zep/view/Snap.h>

#include <QBasicTimer>
#include <QImage>
#include <QObject>
#include <QPoint>

#include <optional>
#include <vector>

class QKeyEvent;
class QMouseEvent;

namespace ZEP {

class TZEPPanel;

/// Measures in a panel: points that the pointer snaps to are marked, each kind by a shape of its
/// own, and clicks of the left button take them. What is measured becomes a `TZEPDimension` of the
/// scene, and the next one may be measured:
///
///     auto* tool = new TZEPMeasureTool(panel);
///     tool->Start(dmDistance);
///
/// A radius takes one click on a circle or an arc, or three points of a circle. A chain ends with a
/// double click, with Return, or at its first point, which closes it. Backspace takes back a point,
/// Escape all of them, and without any it ends measuring. The left button is the tool's as long;
/// all else stays the panel's.
class ZEP_EXPORT TZEPMeasureTool : public QObject {
    Q_OBJECT
public:
    /// \param panel  owns this
    explicit TZEPMeasureTool(TZEPPanel* panel);
    ~TZEPMeasureTool() override;

    /// What is measured; none while nothing is.
    [[nodiscard]] const std::optional<TZEPDimensionKind>& Kind() const { return m_kind; }
    void Start(TZEPDimensionKind kind);
    void Stop();
    /// Of the dimensions that follow: the unit of lengths, and the colour, amber at first.
    void SetSuffix(const QString& suffix) { m_suffix = suffix; }
    void SetColor(TColor color) { m_color = color; }
    /// What the pointer snaps to now.
    [[nodiscard]] const std::optional<TZEPSnap>& Snap() const { return m_snap; }
    /// Taken so far.
    [[nodiscard]] const std::vector<TGLArrayd3>& Points() const { return m_points; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// It stands in the scene, which owns it.
    /// \param of  what its first point belongs to; null where that has gone
    void Measured(ZEP::TZEPDimension* dimension, ZEP::TZEPObject* of);
    /// What to do next, what is measured, or why a click took nothing: for a status line.
    void Told(const QString& text);
    void Stopped();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void Forget();
    void Prompt();
    [[nodiscard]] bool Press(const QMouseEvent& event);
    [[nodiscard]] bool Key(const QKeyEvent& event);
    void Look(const QPoint& place);
    void Take(const TZEPSnap& snap);
    void TakeRadius(const TZEPSnap& snap);
    void EndChain();
    void Finish(const std::vector<TGLArrayd3>& points);
    [[nodiscard]] QImage Marker() const;
    void DrawPreview(std::vector<TGLArrayd3> points);
    void Draw();

    TZEPPanel* m_panel;
    TZEPSnapper m_snapper;
    std::optional<TZEPDimensionKind> m_kind;
    std::vector<TGLArrayd3> m_points;
    QPointer<TZEPObject> m_of; ///< what the first point belongs to
    std::optional<TZEPSnap> m_snap;
    std::optional<QPoint> m_pointer; ///< none: elsewhere
    TZEPDimension m_preview;
    QBasicTimer m_looking;
    QString m_suffix;
    TColor m_color{0x20A5FF};
};

} // namespace ZEP
