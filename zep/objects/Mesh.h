#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/ShadowedObject.h>
#include <zep/scene/VertexItems.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace ZEP {

class TBoxTree;
class TMeshArrays;
class TMeshGroups;

/// Triangles between shared vertexes, flat or, with `Smooth`, shaded by the vertexes' normals. With
/// `ColorFaces` and a material library in the scene, each face is drawn in the library's material
/// of its number: the opaque ones in the opaque pass, the transparent ones in the transparent pass,
/// and one whose number the library lacks not at all. Else all have the material of the mesh.
///
/// Of a smooth mesh, a vertex without a normal gets that of the first face drawn with it, and keeps
/// it. A face with a corner that is no vertex is not drawn.
///
/// What a vertex costs are 72 bytes, a face 32. A mesh of more than 64 faces keeps what it sends in
/// arrays until something of it changes, or it has not been drawn for a long time: at most 24 bytes
/// for each corner, with a texture 32, and 4 more where a smooth mesh shares vertexes.
///
/// Defaults: empty; faces in their own materials, normals computed.
class ZEP_CORE_EXPORT TZEPMesh : public TZEPShadowedObject {
    Q_OBJECT
    Q_PROPERTY(ZEP::TZEPCollection* Vertexes READ Vertexes)
    Q_PROPERTY(ZEP::TZEPCollection* Faces READ Faces)
    Q_PROPERTY(bool ColorFaces READ ColorFaces WRITE SetColorFaces)
    Q_CLASSINFO("ColorFaces", "true")
    Q_PROPERTY(bool AutoNormal READ AutoNormal WRITE SetAutoNormal)
    Q_CLASSINFO("AutoNormal", "true")
    Q_PROPERTY(ZEP::TZEPVertex3* Normal READ Normal)
    Q_MOC_INCLUDE("zep/scene/Vertex3.h")
public:
    explicit TZEPMesh(TComponent* owner = nullptr);
    ~TZEPMesh() override;

    [[nodiscard]] TZEPTexVertexes* Vertexes() { return &m_vertexes; }
    /// Seen from their front, corners run counter-clockwise.
    [[nodiscard]] TZEPFaces* Faces() { return &m_faces; }
    [[nodiscard]] bool ColorFaces() const { return m_colorFaces; }
    /// Draws faces in their own materials.
    void SetColorFaces(bool colorFaces);
    [[nodiscard]] bool AutoNormal() const { return m_autoNormal; }
    /// Computes the normal of each face from its corners; else that of all is `Normal`.
    void SetAutoNormal(bool autoNormal);
    [[nodiscard]] TZEPVertex3* Normal() { return FirstVector(); }

    [[nodiscard]] TGLArrayd3 GetCenter() const override;
    /// Half of the largest extent of the box.
    [[nodiscard]] double GetRadius() const override;
    /// Box of the vertexes, used or not; all zero with fewer than two.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    /// Drops what was computed where the mesh itself, a vertex or a face has changed.
    void Invalidate(TObject* sender) override;
    [[nodiscard]] bool WantsInvalidation() const override;

    /// Where it is closed, each edge run along as often in one direction as in the other, whatever
    /// vertexes stand there twice: that of most of its faces.
    [[nodiscard]] TZEPMaterial* SolidMaterial() override;
    /// Calls `visit` with the numbers of faces that stand in boxes of the mesh's frame of which
    /// `reaches` is true, as it is of boxes about those: of a million faces few boxes are asked,
    /// once they are made. Faces of vertexes that do not exist are left out.
    void
    ForEachFaceIn(const std::function<bool(const TGLArrayd3& min, const TGLArrayd3& max)>& reaches,
                  const std::function<void(int face)>& visit) const;
    void DrawMain(bool draft) override;
    void DrawTransparent(bool draft) override;
    void DrawShadows(bool draft) override;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool DrawsTransparent() const override;
    /// How many materials the scene's library holds: faces of others are not drawn.
    [[nodiscard]] std::uint64_t ShadowLook() const override;
    [[nodiscard]] bool StaysInSize() const override { return m_vertexes.Count() > 1; }
    [[nodiscard]] bool SharesDrawRun() const override { return typeid(*this) == typeid(TZEPMesh); }

private:
    /// Which materials of the library a pass draws.
    enum class TFilter : unsigned char { All, Opaque, Transparent };
    /// Neighbours in the list of faces that have one material.
    struct TRun {
        int Material;
        int First;
        int Last; // inclusive
    };
    /// All of one material, or one of all faces.
    using TRuns = std::span<const TRun>;
    /// What follows from vertexes and faces, computed when first asked for.
    struct TKept {
        std::vector<TGLArrayf3> Normals; // of the faces, where these are sent singly
        std::vector<TRun> Runs;          // ascending by material
        TGLArrayd3 Min{}, Max{};
        bool HasBox = false;
        std::optional<bool> IsClosed;
        std::shared_ptr<const TBoxTree> Blocks; // of faces
    };
    /// Which number a vertex has in the arrays that are filled; empty until it is needed.
    using TNumbers = std::vector<std::uint32_t>;

    [[nodiscard]] bool UsesLibrary() const;
    [[nodiscard]] const std::vector<TRun>& Runs() const;
    [[nodiscard]] bool Passes(const TZEPMaterial& material) const;
    void DrawFiltered(TFilter filter, bool draft);
    void DrawMaterials(GLenum face, bool draft);

    [[nodiscard]] bool HasCorners(const TZEPFace3CI& face) const;
    [[nodiscard]] TGLArrayf3 FaceNormal(const TZEPFace3CI& face) const;
    [[nodiscard]] bool IsClosed() const;
    [[nodiscard]] std::shared_ptr<const TBoxTree> BlocksOfFaces() const;
    void KeepNormals() const;
    /// The normal of a vertex; where it has none, it gets that of the face.
    const TGLArrayf3& SmoothNormal(const TZEPFace3CI& face, TZEPVertex3TexCI& vertex) const;
    /// Calls `visit` with the number of each face that has its corners.
    template <class Visit>
    void ForEachFace(const TRun& run, Visit&& visit) const;
    void SendFaces(TRuns runs, bool draft, bool textured, TNumbers& numbers);
    void SendTriangles(const TRun& run, bool textured);
    void SendOutlines(const TRun& run, bool textured);
    void SendCorners(int number, bool textured);
    void SendArrays(TRuns runs, bool textured, TNumbers& numbers);
    void Fill(TMeshArrays& arrays, TRuns runs) const;
    void CompleteNormals(TRuns runs);
    void FillShared(TMeshArrays& arrays, TRuns runs, TNumbers& numbers);

    TZEPTexVertexes m_vertexes{this};
    TZEPFaces m_faces{this};
    mutable TKept m_kept;
    std::unique_ptr<TMeshGroups> m_groups; // what is sent from arrays
    bool m_colorFaces = true;
    bool m_autoNormal = true;
    TFilter m_filter = TFilter::All;
};

} // namespace ZEP
