#pragma once

#include <zep/Export.h>

#include <QString>

#include <cstdint>

namespace ZEP {

enum class TStockShape : std::uint8_t {
    Flat, ///< an end mill
    Ball, ///< a half sphere
    Bull, ///< flat, with round corners
    V     ///< a cone: engraver, chamfer mill, drill
};

/// What a tool that points down (-z) cuts with, in millimetres. Where it is told to be is its tip:
/// the lowest place of its axis. It is as long as it needs to be, and cuts on all of its length.
struct ZEP_CORE_EXPORT TStockTool {
    /// Diameters from here on to `MaxDiameter`.
    static constexpr double MinDiameter = 0.001;
    static constexpr double MaxDiameter = 10'000;

    TStockShape Shape = TStockShape::Flat;
    double Diameter = 3;
    double CornerRadius = 0.5; ///< of `Bull`: above 0, at most half of the diameter
    double Angle = 90;         ///< of `V`: degrees between its sides, from 1 to 179

    [[nodiscard]] double Radius() const { return Diameter / 2; }
    /// How far above the tip it cuts at a distance from the axis; infinite beyond the radius.
    [[nodiscard]] double EdgeAt(double distance) const;
    /// What is wrong with it: "A tool's diameter is a number from 0.001 to 10000 mm, not 0.". Empty
    /// where it can cut.
    [[nodiscard]] QString Fault() const;

    bool operator==(const TStockTool&) const = default;
};

} // namespace ZEP
