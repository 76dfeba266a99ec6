#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/LineShape.h>
#include <zep/gl/DisplayList.h>
#include <zep/scene/VertexItems.h>

namespace ZEP {

class TZEPViewVolume;

/// A chain of vertexes, open or closed; smoothed it is a natural cubic spline through them. It is
/// white when selected, else red when in error, else `OrigColor`; `Color` follows at each draw.
///
/// Defaults: no vertexes, smoothed in 30 steps, one black colour, open, no display list.
class ZEP_CORE_EXPORT TZEPPolyline : public TZEPLineShape {
    Q_OBJECT
    Q_PROPERTY(int Segments READ Segments WRITE SetSegments)
    Q_CLASSINFO("Segments", "30")
    Q_PROPERTY(ZEP::TZEPCollection* Vertexes READ Vertexes)
    Q_PROPERTY(bool ColorVertexes READ ColorVertexes WRITE SetColorVertexes)
    Q_CLASSINFO("ColorVertexes", "false")
    Q_PROPERTY(bool Closed READ Closed WRITE SetClosed)
    Q_CLASSINFO("Closed", "false")
    Q_PROPERTY(ZEP::TColor OrigColor READ OrigColor WRITE SetOrigColor)
    Q_CLASSINFO("OrigColor", "0")
    Q_PROPERTY(bool InError READ InError WRITE SetInError)
    Q_CLASSINFO("InError", "false")
    Q_PROPERTY(double MaxZValue READ MaxZValue WRITE SetMaxZValue)
    Q_PROPERTY(double MinZValue READ MinZValue WRITE SetMinZValue)
    Q_PROPERTY(int DisplayList READ DisplayList WRITE SetDisplayList STORED false)
    Q_CLASSINFO("DisplayList", "0")
    Q_PROPERTY(bool UseDisplayList READ UseDisplayList WRITE SetUseDisplayList)
    Q_CLASSINFO("UseDisplayList", "false")
public:
    explicit TZEPPolyline(TComponent* owner = nullptr);
    ~TZEPPolyline() override;

    [[nodiscard]] int Segments() const { return m_segments; }
    /// Steps of the spline, brought into 3 to 1,000,000.
    void SetSegments(int segments);
    /// The chain; fewer than two vertexes draw nothing.
    [[nodiscard]] TZEPVertexes* Vertexes() { return &m_vertexes; }
    [[nodiscard]] bool ColorVertexes() const { return m_colorVertexes; }
    /// Draws each vertex in its own colour.
    void SetColorVertexes(bool colorVertexes);
    [[nodiscard]] bool Closed() const { return m_closed; }
    /// Joins the last vertex with the first.
    void SetClosed(bool closed);
    [[nodiscard]] TColor OrigColor() const { return m_origColor; }
    void SetOrigColor(TColor color);
    [[nodiscard]] bool InError() const { return m_inError; }
    /// Marks the polyline as faulty.
    void SetInError(bool inError);
    [[nodiscard]] double MaxZValue() const { return m_maxZValue; }
    /// Bounds of z on the points of the spline, -1000000 and 1000000 at first.
    void SetMaxZValue(double value);
    [[nodiscard]] double MinZValue() const { return m_minZValue; }
    void SetMinZValue(double value);
    [[nodiscard]] int DisplayList() const { return static_cast<int>(m_displayList.Name()); }
    /// Deletes the current list and takes over another of that name; 0 and below: none. A name says
    /// nothing in another process, so that it is not stored.
    void SetDisplayList(int list);
    [[nodiscard]] bool UseDisplayList() const { return m_useDisplayList; }
    /// Compiles the drawing and calls it until something changes; drafts never use the list.
    void SetUseDisplayList(bool useDisplayList);

    /// Box of the vertexes; all zero with fewer than two.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    /// Drops the display list where the polyline itself or a vertex has changed.
    void Invalidate(TObject* sender) override;
    [[nodiscard]] bool WantsInvalidation() const override;

    void DrawMain(bool draft) override;
    void DrawTransparent(bool draft) override;
    void DrawShape(GLenum face, bool draft) override;
    /// Nothing: the colour shows the selection.
    void DrawSelection() override {}

protected:
    /// A spline may swing beyond its vertexes.
    [[nodiscard]] bool StaysInSize() const override {
        return MayBeCulled() && !Smooth() && m_vertexes.Count() > 1;
    }
    /// A list that a host handed in may leave any state behind.
    [[nodiscard]] bool SharesDrawRun() const override {
        return typeid(*this) == typeid(TZEPPolyline) &&
               (m_compiled || !m_displayList.Exists() || !m_useDisplayList);
    }

private:
    void ShowState();
    void SendChain() const;
    void SendVertex(int i) const;
    void SendVertexes() const;
    void SendSpline() const;
    /// Edges that are out of view may be left out.
    [[nodiscard]] bool CanLeaveOut() const;
    void SendSeen(const TZEPViewVolume& volume) const;
    void SendBlock(int first, int last, const TZEPViewVolume& volume) const;

    TZEPVertexes m_vertexes{this};
    double m_maxZValue = 1000000;
    double m_minZValue = -1000000;
    int m_segments = 30;
    TDisplayList m_displayList;
    TColor m_origColor;
    bool m_colorVertexes = false;
    bool m_closed = false;
    bool m_inError = false;
    bool m_useDisplayList = false;
    bool m_compiled = false; // the display list is of the polyline's own making
};

} // namespace ZEP
