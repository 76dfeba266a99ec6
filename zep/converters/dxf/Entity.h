#pragma once

#include <zep/converters/dxf/Tags.h>

namespace ZEP {

/// The group values of one entity in the plain reading; of a group that stands more than once the
/// last value. What the entity lacks keeps its initial value.
struct TEntity {
    std::string_view Kind; ///< of code 0
    qint64 Line = 0;       ///< of its code 0

    std::string_view LineType;          ///< 6
    std::array<TGLArrayd3, 4> Points{}; ///< 10, 20, 30 to 13, 23, 33
    double Radius = 0;                  ///< 40, of texts the height
    double StartAngle = 0;              ///< 50, degrees
    double EndAngle = 0;                ///< 51, degrees
    int Color = 0;                      ///< 62
    int Flags = 0;                      ///< 70
    std::array<int, 4> Corners{};       ///< 71 to 74, amounts
    int Follows = 0;                    ///< 66
    std::string_view Text;              ///< 1
    std::string_view Name;              ///< 2
    std::string_view Layer;             ///< 8
};

/// Reads the groups of the entity whose code 0 was taken last, up to the next code 0, which is
/// pushed back. False where the text ends before that.
bool read_entity_data(TDXFTags& tags, TEntity& entity);

} // namespace ZEP
