#pragma once

#include <zep/Export.h>
#include <zep/scene/ColoredObject.h>
#include <zep/scene/VertexItems.h>

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace ZEP {

struct TTextShape;

/// A measure that stays in the scene: lines between the points that it was taken at, and the value
/// beside them. It lies over whatever is there, is cut by no section, and its text has the same
/// height in pixels however near one looks. White when selected.
///
/// | kind | points | value |
/// |---|---|---|
/// | `dmDistance` | two | from one to the other |
/// | `dmAngle` | on one arm, the corner, on the other arm | degrees between the arms, 0 to 180 |
/// | `dmRadius` | the centre, on the circle | the radius |
/// | `dmChain` | two or more | along all; an area too where the last is the first |
///
/// Defaults: a distance without points, three digits, no unit, capital letters of 9 pixels.
class ZEP_CORE_EXPORT TZEPDimension : public TZEPColoredObject {
    Q_OBJECT
    Q_PROPERTY(TZEPDimensionKind Kind READ Kind WRITE SetKind)
    Q_CLASSINFO("Kind", "dmDistance")
    Q_PROPERTY(ZEP::TZEPCollection* Vertexes READ Vertexes)
    Q_PROPERTY(int Digits READ Digits WRITE SetDigits)
    Q_CLASSINFO("Digits", "3")
    Q_PROPERTY(QString Suffix READ Suffix WRITE SetSuffix)
    Q_PROPERTY(double TextHeight READ TextHeight WRITE SetTextHeight)
    Q_CLASSINFO("TextHeight", "9")
public:
    enum TZEPDimensionKind { dmDistance, dmAngle, dmRadius, dmChain };
    Q_ENUM(TZEPDimensionKind)

    explicit TZEPDimension(TComponent* owner = nullptr);
    ~TZEPDimension() override;

    [[nodiscard]] TZEPDimensionKind Kind() const { return m_kind; }
    void SetKind(TZEPDimensionKind kind);
    /// Its points, in its own frame.
    [[nodiscard]] TZEPVertexes* Vertexes() { return &m_vertexes; }
    void SetPoints(const std::vector<TGLArrayd3>& points);
    [[nodiscard]] int Digits() const { return m_digits; }
    /// Behind the decimal point, kept within 0 to 15.
    void SetDigits(int digits);
    [[nodiscard]] const QString& Suffix() const { return m_suffix; }
    /// The unit of lengths, as in "mm".
    void SetSuffix(const QString& suffix);
    [[nodiscard]] double TextHeight() const { return m_textHeight; }
    /// Of a capital letter, in pixels; kept within 1 to 1000.
    void SetTextHeight(double pixels);

    /// In its own frame; none with too few points or where one is no number.
    [[nodiscard]] std::optional<double> Value() const;
    /// That a closed chain encloses, of its outline as it is seen from where it is largest.
    [[nodiscard]] std::optional<double> Area() const;
    /// What stands beside it: "12.500 mm", "R 4.000 mm", "90.000°"; with a decimal point in all
    /// languages. Empty without a value.
    [[nodiscard]] QString Text() const;
    /// All that is known, to be copied: "Distance 5.000 mm (x 3.000, y 4.000, z 0.000)".
    [[nodiscard]] QString Report() const;

    void Assign(const TComponent* source) override;
    /// Box of the points; all zero with fewer than two.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawMain(bool /*draft*/) override {}
    void DrawTransparent(bool draft) override;
    void DrawSpecific(GLenum face, bool draft) override;
    /// Nothing: the colour shows the selection.
    void DrawSelection() override {}

private:
    [[nodiscard]] std::vector<TGLArrayd3> Points() const;
    [[nodiscard]] TGLArrayd3 TextPlace(const std::vector<TGLArrayd3>& points) const;
    [[nodiscard]] QString Number(double value, const QString& unit) const;
    void SendLines(const std::vector<TGLArrayd3>& points, const TGLArrayd3& origin) const;
    void DrawText(const TGLArrayd3& place, double pixels);

    TZEPVertexes m_vertexes{this};
    std::unique_ptr<TTextShape> m_shape; ///< of `m_shaped`; null: to be made
    QString m_shaped;
    QString m_suffix;
    double m_textHeight = 9;
    int m_digits = 3;
    TZEPDimensionKind m_kind = dmDistance;
};

using TZEPDimensionKind = TZEPDimension::TZEPDimensionKind;
using enum TZEPDimension::TZEPDimensionKind;

} // namespace ZEP
