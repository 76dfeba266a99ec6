#pragma once

#include <zep/Export.h>
#include <zep/objects/Solid.h>

#include <array>

namespace ZEP {

/// The unit box, of which faces can be left out. With more than one slice along an axis its faces
/// are grids of cells, which light near the surface shades better.
///
///          8 ------- 7        y
///         /|        /|        |
///        4 ------- 3 |        o -- x
///        | |       | |       /
///        | 5 ------|-6      z
///        |/        |/       (towards the corners 5 to 8: the front)
///        1 ------- 2
///
/// Defaults: one slice along each axis, all six faces.
class ZEP_CORE_EXPORT TZEPBox : public TZEPSolid {
    Q_OBJECT
    Q_PROPERTY(int SlicesX READ SlicesX WRITE SetSlicesX)
    Q_CLASSINFO("SlicesX", "1")
    Q_PROPERTY(int SlicesY READ SlicesY WRITE SetSlicesY)
    Q_CLASSINFO("SlicesY", "1")
    Q_PROPERTY(int SlicesZ READ SlicesZ WRITE SetSlicesZ)
    Q_CLASSINFO("SlicesZ", "1")
    Q_PROPERTY(TZEPBoxParts Parts READ Parts WRITE SetParts)
    Q_CLASSINFO("Parts", "bpLeft,bpRight,bpTop,bpBottom,bpFront,bpBack")
public:
    enum TZEPBoxPart : unsigned char {
        bpLeft = 1 << 0,   ///< x = -0.5
        bpRight = 1 << 1,  ///< x = 0.5
        bpTop = 1 << 2,    ///< y = 0.5
        bpBottom = 1 << 3, ///< y = -0.5
        bpFront = 1 << 4,  ///< z = 0.5
        bpBack = 1 << 5    ///< z = -0.5
    };
    Q_DECLARE_FLAGS(TZEPBoxParts, TZEPBoxPart)
    Q_FLAG(TZEPBoxParts)

    static constexpr TZEPBoxParts AllParts{bpLeft | bpRight | bpTop | bpBottom | bpFront | bpBack};

    using TZEPSolid::TZEPSolid;

    [[nodiscard]] int SlicesX() const { return m_slices[0]; }
    void SetSlicesX(int slices) { SetSlices(0, slices); }
    [[nodiscard]] int SlicesY() const { return m_slices[1]; }
    void SetSlicesY(int slices) { SetSlices(1, slices); }
    [[nodiscard]] int SlicesZ() const { return m_slices[2]; }
    void SetSlicesZ(int slices) { SetSlices(2, slices); }
    /// Slices along axis `index` (0 to 2; others do nothing), kept within 1 to `MaxCells`.
    void SetSlices(int index, int slices);
    [[nodiscard]] TZEPBoxParts Parts() const { return m_parts; }
    /// The faces that are drawn.
    void SetParts(TZEPBoxParts parts);

    /// The square root of 2. It is more than the box needs; what is measured by it stays as it is.
    [[nodiscard]] double GetRadius() const override;
    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool IsClosed() const override { return m_parts == AllParts; }
    [[nodiscard]] bool SharesDrawRun() const override { return typeid(*this) == typeid(TZEPBox); }

private:
    [[nodiscard]] bool Sliced() const { return m_slices != std::array{1, 1, 1}; }
    void Send(bool draft, bool textured) const;

    std::array<int, 3> m_slices{1, 1, 1};
    TZEPBoxParts m_parts = AllParts;
};

/// A box as frames and signs use it.
class ZEP_CORE_EXPORT TZEPLegendBox : public TZEPBox {
    Q_OBJECT
public:
    using TZEPBox::TZEPBox;

protected:
    [[nodiscard]] bool SharesDrawRun() const override {
        return typeid(*this) == typeid(TZEPLegendBox);
    }
};

using TZEPBoxPart = TZEPBox::TZEPBoxPart;
using TZEPBoxParts = TZEPBox::TZEPBoxParts;
using enum TZEPBox::TZEPBoxPart;
Q_DECLARE_OPERATORS_FOR_FLAGS(TZEPBoxParts)

} // namespace ZEP
