#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/ReflexedObject.h>
#include <zep/framework/Color.h>
#include <zep/framework/Property.h>
#include <zep/objects/DisplayLists.h>
#include <zep/objects/HostCall.h>
#include <zep/objects/Solid.h>

#include <functional>
#include <vector>

namespace ZEP {

class TZEPViewVolume;

/// A surface over x and y whose heights the host gives: a grid of `SlicesX` by `SlicesY` cells,
/// seen from above (+z). Heights, normals and colours are asked for once and kept until something
/// changes or `Refresh` is called. Around a height that is no finite number there is a hole.
///
/// A callback that throws is reported by `Failed`; the field is then empty until it is changed.
///
/// As a mirror it shows from above, as a flat one halfway between its lowest and its highest point.
///
/// Defaults: flat, 20 by 20 cells over -0.5 to 0.5, in the material's colour; without a callback
/// the height is 0.
class ZEP_CORE_EXPORT TZEPHeightField : public TZEPReflexedObject {
    Q_OBJECT
    Q_PROPERTY(bool Smooth READ Smooth WRITE SetSmooth)
    Q_CLASSINFO("Smooth", "false")
    Q_PROPERTY(int SlicesX READ SlicesX WRITE SetSlicesX)
    Q_CLASSINFO("SlicesX", "20")
    Q_PROPERTY(int SlicesY READ SlicesY WRITE SetSlicesY)
    Q_CLASSINFO("SlicesY", "20")
    Q_PROPERTY(double MinX READ MinX WRITE SetMinX)
    Q_CLASSINFO("MinX", "0")
    Q_PROPERTY(double MaxX READ MaxX WRITE SetMaxX)
    Q_CLASSINFO("MaxX", "0")
    Q_PROPERTY(double MinY READ MinY WRITE SetMinY)
    Q_CLASSINFO("MinY", "0")
    Q_PROPERTY(double MaxY READ MaxY WRITE SetMaxY)
    Q_CLASSINFO("MaxY", "0")
    Q_PROPERTY(bool ColorVertexes READ ColorVertexes WRITE SetColorVertexes)
    Q_CLASSINFO("ColorVertexes", "false")
public:
    using THeight = std::function<double(double x, double y)>;
    using TNormal = std::function<TGLArrayd3(double x, double y)>;
    using TColorOf = std::function<TColor(double height)>;

    using TZEPReflexedObject::TZEPReflexedObject;

    void SetSmooth(bool smooth) override;
    [[nodiscard]] int SlicesX() const { return m_slices[0]; }
    /// Kept within 1 to `TZEPSolid::MaxCells`.
    void SetSlicesX(int slices) { Set(m_slices[0], CellCount(slices)); }
    [[nodiscard]] int SlicesY() const { return m_slices[1]; }
    void SetSlicesY(int slices) { Set(m_slices[1], CellCount(slices)); }
    /// \name Where the grid lies
    /// A range that is empty or endless counts as -0.5 to 0.5; both of its ends are 0 at first.
    /// @{
    [[nodiscard]] double MinX() const { return m_min[0]; }
    void SetMinX(double x) { Set(m_min[0], x); }
    [[nodiscard]] double MaxX() const { return m_max[0]; }
    void SetMaxX(double x) { Set(m_max[0], x); }
    [[nodiscard]] double MinY() const { return m_min[1]; }
    void SetMinY(double y) { Set(m_min[1], y); }
    [[nodiscard]] double MaxY() const { return m_max[1]; }
    void SetMaxY(double y) { Set(m_max[1], y); }
    /// @}
    [[nodiscard]] bool ColorVertexes() const { return m_colorVertexes; }
    /// Draws each point in the colour that the host gives its height.
    void SetColorVertexes(bool color) { Set(m_colorVertexes, color); }

    /// \name What the host tells of the surface
    /// Questions: the tree stays as it is while they are answered.
    /// @{
    void SetOnHeight(THeight height);
    /// Used where the field is smooth; without it normals follow from the heights of neighbours.
    void SetOnNormal(TNormal normal);
    void SetOnColor(TColorOf color);
    /// Asks for everything anew: what the callbacks answer has changed.
    void Refresh();
    /// What the callback that failed said; empty while all is well.
    [[nodiscard]] const QString& Error() const { return m_calls.Error(); }
    /// @}

    /// From the lowest to the highest finite point.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    [[nodiscard]] std::array<TGLArrayd3, 3> MirrorPoints() const override;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool DrawsTransparent() const override { return HasTransparentMaterial(); }
    [[nodiscard]] bool StaysInSize() const override { return true; }

Q_SIGNALS:
    /// A callback has thrown, maybe in the middle of a frame or of measuring: show messages, and
    /// change the tree, later, by a queued connection.
    void Failed(ZEP::TZEPObject* sender, const QString& error) const;

private:
    /// What the callbacks answered, row by row from the lowest y.
    struct TSamples {
        std::vector<double> Heights;
        std::vector<TGLArrayf3> Normals; ///< none: they follow from the heights
        std::vector<TColor> Colors;      ///< none: the material's
        bool Known = false;
    };

    template <class T>
    void Set(T& field, T value) {
        if (Change(field, value)) Refresh();
    }
    [[nodiscard]] const TSamples& Samples() const;
    [[nodiscard]] TSamples Asked() const;
    /// The place of a column (axis 0) or row (axis 1).
    [[nodiscard]] double Place(std::size_t axis, int i) const;
    [[nodiscard]] std::size_t Number(int column, int row) const;
    [[nodiscard]] TGLArrayd3 SlopeNormal(int column, int row) const;
    void Send(bool draft, float alpha) const;
    void SendSeen(bool draft, const TZEPViewVolume& volume) const;
    void SendBlock(int column, int row, bool draft, const TZEPViewVolume& volume) const;

    std::array<int, 2> m_slices{20, 20};
    TGLArrayd3 m_min{};
    TGLArrayd3 m_max{};
    THeight m_height;
    TNormal m_normal;
    TColorOf m_color;
    mutable TSamples m_samples;
    mutable THostCall m_calls;
    TDisplayLists m_lists;
    float m_listAlpha = 1;
    bool m_colorVertexes = false;
};

} // namespace ZEP
