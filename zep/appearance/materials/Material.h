#pragma once

#include <zep/Export.h>
#include <zep/appearance/materials/FaceMaterial.h>
#include <zep/appearance/materials/Texture.h>

namespace ZEP {

/// How a surface looks: a material for each side, a texture and a transparency. A new one is grey
/// and opaque and has no texture.
class ZEP_CORE_EXPORT TZEPMaterial : public TPersistent {
    Q_GADGET
    Q_PROPERTY(TZEPFaceMaterial* BackFace READ BackFace)
    Q_PROPERTY(TZEPFaceMaterial* FrontFace READ FrontFace)
    Q_PROPERTY(TZEPTexture* Texture READ Texture WRITE SetTexture)
    Q_PROPERTY(float Transparency READ Transparency WRITE SetTransparency)
public:
    /// \param onChange  called when a face material or the texture changes, with that as sender
    explicit TZEPMaterial(TNotifyEvent onChange);
    ~TZEPMaterial() override;
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] TZEPFaceMaterial* BackFace() { return &m_backFace; }
    [[nodiscard]] const TZEPFaceMaterial* BackFace() const { return &m_backFace; }
    [[nodiscard]] TZEPFaceMaterial* FrontFace() { return &m_frontFace; }
    [[nodiscard]] const TZEPFaceMaterial* FrontFace() const { return &m_frontFace; }
    [[nodiscard]] TZEPTexture* Texture() { return &m_texture; }
    [[nodiscard]] const TZEPTexture* Texture() const { return &m_texture; }
    /// Copies `value` into the material's own texture.
    void SetTexture(const TZEPTexture* value) { m_texture.Assign(value); }
    /// 0 (opaque) .. 1 (not seen). The number is kept as given; the faces clamp theirs.
    [[nodiscard]] float Transparency() const { return m_transparency; }
    /// Calls the change event twice, once for each face, where the value is new.
    void SetTransparency(float value);

    /// Drawn blended, in the transparent pass.
    [[nodiscard]] bool IsTransparent() const { return m_transparency > 0; }
    /// Holds a picture to be laid on the surface.
    [[nodiscard]] bool HasTexture() const { return !m_texture.Empty(); }
    /// Whether applying `other` after this would set nothing new. Two materials are never the same
    /// where one has a texture.
    [[nodiscard]] bool SameAs(const TZEPMaterial& other) const;

    /// All values are the same, and neither has a picture.
    [[nodiscard]] bool HasValuesOf(const TZEPMaterial& other) const;

    /// Hands the material to OpenGL.
    /// \param face  `GL_FRONT`, `GL_BACK` or `GL_FRONT_AND_BACK`: the sides that are set
    virtual void ApplayMaterial(GLenum face);
    /// Hands both sides to OpenGL, the front with that alpha; the material stays as it is.
    void ApplayWithFrontAlpha(float alpha);
    /// Hands both sides and the texture to OpenGL where `applied` is what it has.
    void ApplayChanges(const TZEPMaterial& applied);
    /// Takes back what applying switched on: the texture.
    virtual void CancelMaterial();

    /// Copies another material; others raise `Exception`.
    void Assign(const TPersistent* source) override;

private:
    TZEPFaceMaterial m_frontFace;
    TZEPFaceMaterial m_backFace;
    TZEPTexture m_texture;
    float m_transparency = 0;
};

} // namespace ZEP
