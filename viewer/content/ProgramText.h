#pragma once

#include <QString>

#include <vector>

namespace ZEP {

struct TPathTool;
struct TToolPathStatistics;

/// What is told about a program.
struct TProgramFact {
    QString Name, Value;
};

/// Times, lengths, extents and holes, with their units.
[[nodiscard]] std::vector<TProgramFact> FactsOf(const TToolPathStatistics& statistics);

/// Its number and name; what the program begins with where it has neither.
[[nodiscard]] QString NameOf(const TPathTool& tool);
/// "300 to 600", or the one number; empty where none is known.
[[nodiscard]] QString RangeText(double low, double high);
[[nodiscard]] QString LengthText(double millimetres);
/// Of a `TToolMoveKind`, lower case.
[[nodiscard]] QString KindName(std::size_t kind);

} // namespace ZEP
