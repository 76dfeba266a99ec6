#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/ReflexedObject.h>
#include <zep/objects/DisplayLists.h>
#include <zep/scene/VertexItems.h>

#include <memory>

struct GLUtesselator;

namespace ZEP {

/// A polygon in a plane, which may be concave: it is then cut into triangles by GLU. Its front is
/// seen where the vertexes run counter-clockwise.
///
/// A concave one is filled in the material's colour with the normal in force; colours of vertexes
/// and normals show on outlines and where `Concave` is false.
///
/// As a mirror it shows on its front; one that is `Concave` shows on the other side, where the
/// vertexes run clockwise.
///
/// Defaults: no vertexes; in their colours, normal computed, concave, kept in display lists.
class ZEP_CORE_EXPORT TZEPPolygon : public TZEPReflexedObject {
    Q_OBJECT
    Q_PROPERTY(ZEP::TZEPCollection* Vertexes READ Vertexes)
    Q_PROPERTY(bool ColorVertexes READ ColorVertexes WRITE SetColorVertexes)
    Q_CLASSINFO("ColorVertexes", "true")
    Q_PROPERTY(bool AutoNormal READ AutoNormal WRITE SetAutoNormal)
    Q_CLASSINFO("AutoNormal", "true")
    Q_PROPERTY(ZEP::TZEPVertex3* Normal READ Normal)
    Q_PROPERTY(bool UseDisplayList READ UseDisplayList WRITE SetUseDisplayList)
    Q_CLASSINFO("UseDisplayList", "true")
    Q_PROPERTY(bool Concave READ Concave WRITE SetConcave)
    Q_CLASSINFO("Concave", "true")
    Q_MOC_INCLUDE("zep/scene/Vertex3.h")
public:
    explicit TZEPPolygon(TComponent* owner = nullptr);
    ~TZEPPolygon() override;

    /// The corners in order; fewer than three draw nothing.
    [[nodiscard]] TZEPTexVertexes* Vertexes() { return &m_vertexes; }
    [[nodiscard]] bool ColorVertexes() const { return m_colorVertexes; }
    /// Draws each vertex in its own colour.
    void SetColorVertexes(bool colorVertexes);
    [[nodiscard]] bool AutoNormal() const { return m_autoNormal; }
    /// Computes the normal from the first three vertexes; else it is `Normal`.
    void SetAutoNormal(bool autoNormal);
    [[nodiscard]] TZEPVertex3* Normal() { return FirstVector(); }
    [[nodiscard]] bool UseDisplayList() const { return m_useDisplayList; }
    /// Compiles the filled drawing, of each side for itself, and calls it until something changes.
    void SetUseDisplayList(bool useDisplayList);
    [[nodiscard]] bool Concave() const { return m_concave; }
    /// Fills through the tessellator: what has dents or holes, or crosses itself.
    void SetConcave(bool concave);

    /// The first three vertexes, which span the plane of a mirror; all zero with fewer.
    [[nodiscard]] std::array<TGLArrayd3, 3> MirrorPoints() const override;
    /// Drops the display lists; they are compiled anew when next drawn.
    void ClearDisplayList();

    /// \name Drawing with the tessellator by hand
    /// Between the calls vertexes go to `gluTessVertex(Tessellator(), place, place)`, three doubles
    /// each. A hole is a contour that runs the other way round.
    /// @{
    void Begin_Polygon();
    void End_Polygon();
    static void Begin_Contour();
    static void End_Contour();
    /// One for all polygons: only one is drawn at a time.
    [[nodiscard]] static GLUtesselator* Tessellator();
    /// The first vertex but for the last at just these x and y, whatever its z; else the last one,
    /// null where there is none.
    [[nodiscard]] const TZEPVertex3TexCI* VertexAt(double x, double y);
    /// @}

    [[nodiscard]] TGLArrayd3 GetCenter() const override;
    /// Half of the largest extent of the box.
    [[nodiscard]] double GetRadius() const override;
    /// Box of the vertexes; all zero with fewer than two.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    /// Passes on nothing with fewer than three vertexes.
    void Invalidate(TObject* sender) override;
    [[nodiscard]] bool WantsInvalidation() const override;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    /// Sends the normal, which the tessellated drawing leaves as it is.
    void PrepareGeometry() override;
    [[nodiscard]] bool StaysInSize() const override { return m_vertexes.Count() > 2; }
    [[nodiscard]] bool SharesDrawRun() const override {
        return typeid(*this) == typeid(TZEPPolygon);
    }

private:
    struct TPlaces;

    [[nodiscard]] TGLArrayd3 DrawnNormal() const;
    [[nodiscard]] float VertexAlpha();
    [[nodiscard]] TDisplayList& ListOf(GLenum face);
    [[nodiscard]] bool HasList() const;
    void Send(GLenum face, bool draft);
    void SendDirect(GLenum face, bool draft);
    void SendLoop(bool reversed, bool draft, const TGLArrayd3& normal, float alpha);
    void SendTessellated(GLenum face);
    void SendContour(bool reversed);
    [[nodiscard]] bool CanBeTessellated() const;

    TZEPTexVertexes m_vertexes{this};
    std::unique_ptr<TPlaces> m_places;   // while tessellating
    std::array<TDisplayList, 3> m_lists; // both sides, front, back
    float m_listAlpha = 0;
    bool m_colorVertexes = true;
    bool m_autoNormal = true;
    bool m_useDisplayList = true;
    bool m_concave = true;
};

/// \name What the tessellator calls
/// @{
/// Sends the texture coordinates of the polygon's vertex there (`VertexAt`), then the point.
/// \param vertex  three doubles
ZEP_CORE_EXPORT void vertexCallbackData(const double* vertex, TZEPPolygon* polygon);
/// Makes a vertex where edges cross: the place and three zeros, kept until the next polygon begins.
ZEP_CORE_EXPORT void combineCallback(const double place[3], void* neighbours[4],
                                     const float weights[4], void** result);
/// @}

} // namespace ZEP
