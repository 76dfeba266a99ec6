#include <zep/converters/dxf/Entity.h>

#include <cstdlib>
#include <limits>

namespace ZEP {

namespace {

/// Flips nothing where the amount cannot be told.
int Amount(int value) {
    return value == std::numeric_limits<int>::min() ? 0 : std::abs(value);
}

/// 10 to 33: the first digit is the axis, the second the point.
void TakePoint(TDXFTags& tags, TEntity& entity) {
    const int axis = tags.Code() / 10 - 1;
    const int point = tags.Code() % 10;
    if (axis < 0 || axis > 2 || point > 3) return;
    entity.Points[static_cast<std::size_t>(point)][static_cast<std::size_t>(axis)] = tags.ValDbl();
}

void Take(TDXFTags& tags, TEntity& entity) {
    switch (tags.Code()) {
    case 1:
        entity.Text = tags.ValStr();
        break;
    case 2:
        entity.Name = tags.ValStr();
        break;
    case 6:
        entity.LineType = tags.ValStr();
        break;
    case 8:
        entity.Layer = tags.ValStr();
        break;
    case 40:
        entity.Radius = tags.ValDbl();
        break;
    case 50:
        entity.StartAngle = tags.ValDbl();
        break;
    case 51:
        entity.EndAngle = tags.ValDbl();
        break;
    case 62:
        entity.Color = tags.ValInt();
        break;
    case 66:
        entity.Follows = tags.ValInt();
        break;
    case 70:
        entity.Flags = tags.ValInt();
        break;
    case 71:
    case 72:
    case 73:
    case 74:
        entity.Corners[static_cast<std::size_t>(tags.Code() - 71)] = Amount(tags.ValInt());
        break;
    default:
        TakePoint(tags, entity);
    }
}

} // namespace

bool read_entity_data(TDXFTags& tags, TEntity& entity) {
    entity.Kind = tags.ValStr();
    entity.Line = tags.LineNumber();
    while (tags.NextGroupCode() > 0) Take(tags, entity);
    if (tags.Code() < 0) return false;
    tags.go_back_to_last();
    return true;
}

} // namespace ZEP
