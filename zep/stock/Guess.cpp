#include <zep/stock/Guess.h>

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr double MillimetresOfInch = 25.4;
constexpr double DrillAngle = 118;
constexpr double LeastBelow = 1; ///< of a block, below the deepest cut
constexpr double CellsOfBlock = 500;

bool Has(const QString& name, const char* pattern) {
    return name.contains(
        QRegularExpression(QLatin1String(pattern), QRegularExpression::CaseInsensitiveOption));
}

/// The first group's number, and the second's below it; 0 where the pattern is not there.
double NumberOf(const QString& name, const char* pattern) {
    const auto match =
        QRegularExpression(QLatin1String(pattern), QRegularExpression::CaseInsensitiveOption)
            .match(name);
    const double below = match.captured(2).toDouble();
    return match.captured(1).toDouble() / (below > 0 ? below : 1);
}

double DiameterIn(const QString& name) {
    if (const double inches = NumberOf(
            name,
            R"((\d+)\s*/\s*(\d+)\s*(?:in\b|inch|"|(?=[a-z ]*(?:mill|drill|ball|flat|bit|end))))");
        inches > 0)
        return inches * MillimetresOfInch;
    if (const double inches = NumberOf(name, R"((\d*\.?\d+)\s*(?:in\b|inch|"))"); inches > 0)
        return inches * MillimetresOfInch;
    // Not what is long or is held.
    constexpr auto inMillimetres =
        R"((\d*\.?\d+)\s*mm(?!\s*(?:long|length|loc\b|oal\b|reach|stick|shank|shaft)))";
    if (const double millimetres = NumberOf(name, inMillimetres); millimetres > 0)
        return millimetres;
    return NumberOf(name, R"(\b(?:D|DIA)[ .=:]*(\d*\.?\d+))");
}

TStockShape ShapeIn(const QString& name) {
    if (Has(name, R"(\bbull|\bCR\s*=?\s*0*\.?0*[1-9])")) return TStockShape::Bull;
    if (Has(name, R"(\bball|\bround nose|\bsphere)")) return TStockShape::Ball;
    if (Has(name, R"(\bV\b|\bV-|\bV\d|engrav|chamfer|drill|countersink|\bspot)"))
        return TStockShape::V;
    return TStockShape::Flat;
}

double AngleIn(const QString& name) {
    if (const double angle = NumberOf(name, R"(\bV[- ]?(?:bit|cutter|tool)?[ =]*(\d*\.?\d+))");
        angle > 0)
        return angle;
    if (const double angle = NumberOf(name, R"((\d*\.?\d+)\s*(?:deg|\x{b0}))"); angle > 0)
        return angle;
    return Has(name, "drill") ? DrillAngle : TStockTool().Angle;
}

} // namespace

TGuessedTool GuessTool(const TPathTool& tool) {
    static const QRegularExpression decimalComma(QStringLiteral(R"((\d),(\d))"));
    const QString name = QString(tool.Name).replace(decimalComma, QStringLiteral(R"(\1.\2)"));
    TGuessedTool guess;
    guess.Tool.Shape = ShapeIn(name);
    const double diameter = tool.Diameter > 0 ? tool.Diameter : DiameterIn(name);
    if (diameter > 0) {
        guess.Tool.Diameter = diameter;
        guess.KnowsDiameter = true;
    }
    guess.Tool.Angle = AngleIn(name);
    const double corner = NumberOf(name, R"(\b(?:CR|R)\s*=?\s*(\d*\.?\d+))");
    guess.Tool.CornerRadius = corner > 0 ? corner : guess.Tool.Diameter / 8;
    if (guess.Tool.Fault().isEmpty()) return guess;
    return {};
}

std::optional<TStockBlock> GuessBlock(const TToolPath& path, const std::vector<TStockTool>& tools) {
    std::optional<TZEPBounds> reached;
    for (int i = 0; i < path.Count(); ++i) {
        const TToolMove move = path.Move(i);
        if (move.Kind == TToolMoveKind::Rapid || move.Kind == TToolMoveKind::Dwell) continue;
        TZEPBounds bounds = path.BoundsOf(i);
        for (const std::size_t k : {0U, 1U}) {
            bounds.Min[k] -= tools[move.Tool].Radius();
            bounds.Max[k] += tools[move.Tool].Radius();
        }
        Widen(reached, bounds);
    }
    if (!reached) return {};
    TStockBlock block{reached->Min, reached->Max};
    if (block.Min[2] < 0) block.Max[2] = 0;
    block.Min[2] -= std::max((block.Max[2] - block.Min[2]) / 10, LeastBelow);
    const double longest = std::max(block.Max[0] - block.Min[0], block.Max[1] - block.Min[1]);
    block.Cell = longest / CellsOfBlock;
    return block;
}

} // namespace ZEP
