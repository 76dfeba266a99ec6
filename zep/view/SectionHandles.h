#pragma once

#include <zep/Export.h>
#include <zep/scene/Sections.h>
#include <zep/view/Extent.h>

#include <QImage>
#include <QObject>
#include <QPoint>

#include <optional>

class QMouseEvent;

namespace ZEP {

class TZEPPanel;

/// Shows where the sections of a panel's camera cut its scene, each as the rim of its plane about
/// the content, with a handle in its middle that the left button drags along the normal:
///
///     auto* handles = new TZEPSectionHandles(panel);
///     handles->SetContent(VisibleExtent(scene).Bounds());
///
/// Escape takes a drag back. Handles take the left button from the panel; all else stays the
/// panel's.
class ZEP_EXPORT TZEPSectionHandles : public QObject {
    Q_OBJECT
public:
    /// \param panel  owns this
    explicit TZEPSectionHandles(TZEPPanel* panel);

    /// What planes are shown about and dragged within; none, as at first: there are no handles.
    void SetContent(const std::optional<TZEPBounds>& content);
    /// The section whose handle is there; none beside them.
    /// \param place  device pixels from the upper left corner of the panel
    [[nodiscard]] std::optional<std::size_t> At(const QPoint& place) const;
    /// The middle of a handle, in device pixels; none for a section that does not cut, and where
    /// it is not seen.
    [[nodiscard]] std::optional<QPoint> PlaceOf(std::size_t section) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The user has dragged one; the camera has it already.
    void Moved(std::size_t section);

private:
    struct TDrag {
        std::size_t Section;
        TZEPSections Before;
        double Grip; ///< along the normal, from where the handle was
        TGLArrayd3 Anchor;
    };

    [[nodiscard]] std::optional<TGLArrayd3> Anchor(const TZEPSection& section) const;
    [[nodiscard]] double Along(const TGLArrayd3& anchor, const TGLArrayd3& normal,
                               const QPoint& place) const;
    [[nodiscard]] QPoint PlaceOf(const QMouseEvent& event) const;
    [[nodiscard]] bool Press(const QMouseEvent& event);
    [[nodiscard]] bool Follow(const QMouseEvent& event);
    [[nodiscard]] bool Release(const QMouseEvent& event);
    [[nodiscard]] bool TakeBack();
    void DragTo(const QPoint& place);
    void Hover(const std::optional<std::size_t>& section);
    [[nodiscard]] QImage Picture(std::size_t section, const TGLArrayd3& anchor) const;
    void DrawRim(std::size_t section, const TGLArrayd3& anchor) const;
    void Draw() const;

    TZEPPanel* m_panel;
    std::optional<TZEPBounds> m_content;
    std::optional<std::size_t> m_hovered;
    std::optional<TDrag> m_drag;
};

} // namespace ZEP
