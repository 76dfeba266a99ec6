#include <zep/stock/Tool.h>

namespace ZEP {

namespace {

bool IsWithin(double value, double min, double max) {
    return value >= min && value <= max; // which what is no number never is
}

QString OutOfRange(const char* what, double min, double max, const char* unit, double value) {
    return QStringLiteral("A tool's %1 is a number from %2 to %3 %4, not %5.")
        .arg(QLatin1String(what))
        .arg(min)
        .arg(max)
        .arg(QLatin1String(unit))
        .arg(value);
}

} // namespace

QString TStockTool::Fault() const {
    if (!IsWithin(Diameter, MinDiameter, MaxDiameter))
        return OutOfRange("diameter", MinDiameter, MaxDiameter, "mm", Diameter);
    if (Shape == TStockShape::Bull && !(CornerRadius > 0 && CornerRadius <= Radius()))
        return QStringLiteral("A corner's radius is above 0 and at most %1 mm, half of the tool's "
                              "diameter, not %2.")
            .arg(Radius())
            .arg(CornerRadius);
    if (Shape == TStockShape::V && !IsWithin(Angle, 1, 179))
        return OutOfRange("angle", 1, 179, "degrees", Angle);
    return {};
}

} // namespace ZEP
