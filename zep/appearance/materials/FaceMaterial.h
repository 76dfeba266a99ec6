#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/framework/Persistent.h>

#include <GL/gl.h>

namespace ZEP {

/// How one side of a surface reflects light: four colours, each kept as the host's colour and as
/// the RGBA floats that OpenGL gets, and a shininess.
///
/// A new one is grey (ambient 0x404040, diffuse 0xC0C0C0, specular and emission black, shininess
/// 0). Its alphas are 0 until a transparency is set: an opaque surface is drawn without blending,
/// so that they are never seen.
class ZEP_CORE_EXPORT TZEPFaceMaterial : public TPersistent {
    Q_GADGET
    Q_PROPERTY(TColor Ambient READ Ambient WRITE SetAmbient)
    Q_CLASSINFO("Ambient", "0x404040")
    Q_PROPERTY(TColor Diffuse READ Diffuse WRITE SetDiffuse)
    Q_CLASSINFO("Diffuse", "0xC0C0C0")
    Q_PROPERTY(TColor Specular READ Specular WRITE SetSpecular)
    Q_CLASSINFO("Specular", "0")
    Q_PROPERTY(TColor Emission READ Emission WRITE SetEmission)
    Q_CLASSINFO("Emission", "0")
    Q_PROPERTY(float Shininess READ Shininess WRITE SetShininess)
public:
    /// What `SetColor` sets; the first four are also places of `RGBA`.
    enum ColorIndex { AmbientColor, DiffuseColor, SpecularColor, EmissionColor, BaseColor = 10 };
    /// What `SetParam` sets.
    enum ParamIndex { ShininessParam, TransparencyParam };

    /// \param face      `GL_FRONT` or `GL_BACK`
    /// \param onChange  called with this as sender when a parameter, not a colour, is set
    TZEPFaceMaterial(GLenum face, TNotifyEvent onChange);
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] GLenum Face() const { return m_face; }
    [[nodiscard]] TColor Ambient() const { return m_colors[AmbientColor]; }
    void SetAmbient(TColor value) { SetColor(AmbientColor, value); }
    [[nodiscard]] TColor Diffuse() const { return m_colors[DiffuseColor]; }
    void SetDiffuse(TColor value) { SetColor(DiffuseColor, value); }
    [[nodiscard]] TColor Specular() const { return m_colors[SpecularColor]; }
    void SetSpecular(TColor value) { SetColor(SpecularColor, value); }
    [[nodiscard]] TColor Emission() const { return m_colors[EmissionColor]; }
    void SetEmission(TColor value) { SetColor(EmissionColor, value); }
    /// Sharpness of the highlight, clamped to 0 (wide) .. 128 (sharp).
    [[nodiscard]] float Shininess() const { return m_shininess; }
    void SetShininess(float value) { SetParam(ShininessParam, value); }
    /// 0 (opaque) .. 1 (not seen).
    [[nodiscard]] float Transparency() const { return m_transparency; }
    /// The floats that OpenGL gets for colour `index` (0 to 3).
    [[nodiscard]] const TGLColor& RGBA(ColorIndex index) const { return m_rgba[index]; }

    /// Sets a colour by its `ColorIndex`; `BaseColor` sets ambient and diffuse, other numbers do
    /// nothing. Never calls the change event: who sets a colour invalidates what shows it.
    void SetColor(int index, TColor value);
    /// Sets a number by its `ParamIndex`, clamped to its range, and calls the change event; other
    /// indices do nothing.
    void SetParam(int index, float value);
    /// Sets the alpha of all four colours, silently.
    void SetAlpha(float alpha);

    /// Hands the colours and the shininess to OpenGL.
    virtual void ApplayMaterial() const;
    /// Hands `face`, which now has what `applied` holds, the values that differ.
    void ApplayChanges(const TZEPFaceMaterial& applied, GLenum face) const;
    /// Takes back what `ApplayMaterial` set; nothing here.
    virtual void CancelMaterial() const {}
    /// Whether both hand the same values to OpenGL, the side apart.
    [[nodiscard]] bool SameAs(const TZEPFaceMaterial& other) const;

    /// Colours, also as the host names them, shininess and transparency are the same.
    [[nodiscard]] bool HasValuesOf(const TZEPFaceMaterial& other) const;

    /// Copies colours, shininess and transparency of another face material, silently; the side and
    /// the change event stay. Other classes raise `Exception`.
    void Assign(const TPersistent* source) override;

private:
    GLenum m_face;
    std::array<TColor, 4> m_colors{};
    std::array<TGLColor, 4> m_rgba{};
    float m_shininess = 0;
    float m_transparency = 0;
    TNotifyEvent m_onChange;
};

} // namespace ZEP
