#pragma once

#include <zep/Export.h>
#include <zep/framework/Persistent.h>
#include <zep/scene/Geom.h>

namespace ZEP {

/// A point or vector that an object publishes; it tells its owner of every change. Starts at
/// (0, 0, 0).
class ZEP_CORE_EXPORT TZEPVertex3 : public TPersistent {
    Q_GADGET
    Q_PROPERTY(double X READ X WRITE SetX)
    Q_PROPERTY(double Y READ Y WRITE SetY)
    Q_PROPERTY(double Z READ Z WRITE SetZ)
public:
    /// \param onChange  called after every change, with this vertex as sender
    explicit TZEPVertex3(TNotifyEvent onChange = {}) : m_onChange(onChange) {}
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] double X() const { return m_data[0]; }
    void SetX(double x) { SetValue(0, x); }
    [[nodiscard]] double Y() const { return m_data[1]; }
    void SetY(double y) { SetValue(1, y); }
    [[nodiscard]] double Z() const { return m_data[2]; }
    void SetZ(double z) { SetValue(2, z); }
    [[nodiscard]] const TGLArrayd3& Data() const { return m_data; }
    void GetData(double& x, double& y, double& z) const;

    /// Coordinate 0..2 by number; other numbers are ignored. An equal value changes nothing.
    virtual void SetValue(int index, double value);
    /// All three at once: one notification, also where nothing differs.
    void SetData(double x, double y, double z);
    void SetData(const TGLArrayd3& data) { SetData(data[0], data[1], data[2]); }
    /// All three without a notification, for an owner that follows up by itself.
    void SetDataQuietly(const TGLArrayd3& data) { m_data = data; }

    /// Copies the coordinates of another vertex, with one notification.
    void Assign(const TPersistent* source) override;

protected:
    void Changed() { m_onChange(this); }

private:
    TNotifyEvent m_onChange;
    TGLArrayd3 m_data{};
};

/// A vertex with texture coordinates, which start at (0, 0).
class ZEP_CORE_EXPORT TZEPVertex3Tex : public TZEPVertex3 {
    Q_GADGET
    Q_PROPERTY(double TexX READ TexX WRITE SetTexX)
    Q_PROPERTY(double TexY READ TexY WRITE SetTexY)
public:
    using TZEPVertex3::TZEPVertex3;
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] double TexX() const { return m_tex[0]; }
    void SetTexX(double x) { SetValue(3, x); }
    [[nodiscard]] double TexY() const { return m_tex[1]; }
    void SetTexY(double y) { SetValue(4, y); }

    /// Coordinates 0..2, texture coordinates 3 and 4.
    void SetValue(int index, double value) override;
    /// Both at once: one notification, also where nothing differs.
    void SetTexCoord(double u, double v);

    /// Copies the coordinates, and the texture coordinates where the source has them.
    void Assign(const TPersistent* source) override;

private:
    std::array<double, 2> m_tex{};
};

} // namespace ZEP
