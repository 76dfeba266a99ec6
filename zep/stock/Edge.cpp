#include <zep/stock/Edge.h>

#include <limits>

namespace ZEP {

// Here, since edges are made of tools.
double TStockTool::EdgeAt(double distance) const {
    if (!(distance <= Radius())) return std::numeric_limits<double>::infinity();
    return WithEdge(*this, 0, [&](const auto& edge) { return edge.At(distance * distance); });
}

} // namespace ZEP
