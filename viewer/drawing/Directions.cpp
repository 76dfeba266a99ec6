#include "viewer/drawing/Directions.h"

namespace ZEP {

TGLArrayd3 ToEye(TDirection direction) {
    switch (direction) {
    case TDirection::Top:
        return {0, -0.001, 1};
    case TDirection::Front:
        return {0, -1, 0};
    case TDirection::Right:
        return {1, 0, 0};
    case TDirection::Left:
        return {-1, 0, 0};
    case TDirection::Back:
        return {0, 1, 0};
    case TDirection::Bottom:
        return {0, -0.001, -1};
    case TDirection::Iso:
        break;
    }
    return {1, -1, 1};
}

} // namespace ZEP
