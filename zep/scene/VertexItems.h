#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/framework/SharedCollection.h>
#include <zep/scene/Geom.h>

namespace ZEP {

/// A vertex of a polyline, polygon or mesh: a point with a colour. Starts white at (0, 0, 0).
class ZEP_CORE_EXPORT TZEPVertex3CI : public TZEPCollectionItem {
    Q_GADGET
    Q_PROPERTY(ZEP::TColor Color READ Color WRITE SetColor)
    Q_PROPERTY(double X READ X WRITE SetX)
    Q_PROPERTY(double Y READ Y WRITE SetY)
    Q_PROPERTY(double Z READ Z WRITE SetZ)
    Q_CLASSINFO("Color", "0x00FFFFFF")
public:
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] TColor Color() const { return m_color; }
    void SetColor(TColor color);
    /// The colour as OpenGL takes it, alpha 1.
    [[nodiscard]] TGLColor RGBA() const { return ToGLColor(m_color, 1); }
    [[nodiscard]] double X() const { return m_data[0]; }
    void SetX(double x) { SetData(0, x); }
    [[nodiscard]] double Y() const { return m_data[1]; }
    void SetY(double y) { SetData(1, y); }
    [[nodiscard]] double Z() const { return m_data[2]; }
    void SetZ(double z) { SetData(2, z); }
    [[nodiscard]] const TGLArrayd3& Data() const { return m_data; }

    /// Coordinate 0..2 by number; other numbers are ignored.
    virtual void SetData(int index, double value);
    /// All three at once, with one invalidation where they differ.
    void SetPoint(const TGLArrayd3& point);
    /// For a loop that tells by itself: nobody is told.
    void SetPointQuietly(const TGLArrayd3& point) { m_data = point; }

    /// "(x, y, z)", each with six decimals and a point.
    [[nodiscard]] QString GetDisplayName() const override;

private:
    TGLArrayd3 m_data{};
    TColor m_color = clWhite; // last: a descendant's fields begin right behind it
};

/// A vertex with texture coordinates, which start at (0, 0), and a normal for smooth surfaces.
class ZEP_CORE_EXPORT TZEPVertex3TexCI : public TZEPVertex3CI {
    Q_GADGET
    Q_PROPERTY(double TexX READ TexX WRITE SetTexX)
    Q_PROPERTY(double TexY READ TexY WRITE SetTexY)
public:
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] double TexX() const { return m_tex[0]; }
    void SetTexX(double x) { SetData(3, x); }
    [[nodiscard]] double TexY() const { return m_tex[1]; }
    void SetTexY(double y) { SetData(4, y); }

    /// Coordinates 0..2, texture coordinates 3 and 4.
    void SetData(int index, double value) override;
    /// For a loop that tells by itself: nobody is told.
    void SetTexCoordQuietly(double u, double v) { m_tex = {u, v}; }

    /// Not published. All zero, as it starts: whoever draws it smooth puts a face's normal here.
    [[nodiscard]] const TGLArrayf3& Normal() const { return m_normal; }
    void SetNormal(const TGLArrayf3& normal);
    /// For a drawing that fills in what is missing: nobody is told.
    void SetNormalQuietly(const TGLArrayf3& normal) { m_normal = normal; }

private:
    TGLArrayf3 m_normal{};
    std::array<double, 2> m_tex{};
};

/// A triangle of a mesh: three indices into the vertices of its owner, and the material of the
/// scene's library, -1 for the owner's own.
class ZEP_CORE_EXPORT TZEPFace3CI : public TZEPCollectionItem {
    Q_GADGET
    Q_PROPERTY(int A READ A WRITE SetA)
    Q_PROPERTY(int B READ B WRITE SetB)
    Q_PROPERTY(int C READ C WRITE SetC)
    Q_PROPERTY(int MaterialIndex READ MaterialIndex WRITE SetMaterialIndex)
    Q_CLASSINFO("MaterialIndex", "-1")
public:
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] int A() const { return m_vertices[0]; }
    void SetA(int a) { SetData(0, a); }
    [[nodiscard]] int B() const { return m_vertices[1]; }
    void SetB(int b) { SetData(1, b); }
    [[nodiscard]] int C() const { return m_vertices[2]; }
    void SetC(int c) { SetData(2, c); }
    [[nodiscard]] int MaterialIndex() const { return m_materialIndex; }
    virtual void SetMaterialIndex(int index);

    /// Corner 0..2 by number; other numbers are ignored.
    virtual void SetData(int index, int value);
    /// \name For a loop that tells by itself: nobody is told
    /// @{
    void SetCornersQuietly(int a, int b, int c) { m_vertices = {a, b, c}; }
    void SetMaterialIndexQuietly(int index) { m_materialIndex = index; }
    /// @}

    /// "(a, b, c)".
    [[nodiscard]] QString GetDisplayName() const override;

private:
    std::array<int, 3> m_vertices{};
    int m_materialIndex = -1;
};

using TZEPVertexes = TZEPCollectionOf<TZEPVertex3CI>;
using TZEPTexVertexes = TZEPCollectionOf<TZEPVertex3TexCI>;
using TZEPFaces = TZEPCollectionOf<TZEPFace3CI>;

} // namespace ZEP
