#pragma once

#include "tests/tracing/Stage.h"

namespace ZEP::Tracing {

inline constexpr TLook Ground{.Matte = {1, 1, 1}, .Receives = true};
inline constexpr TLook Caster{.Glow = {0.4, 0.4, 0.1}, .Casts = true};

inline constexpr TLook Red{.Glow = {0.3, 0, 0}, .Matte = {0.6, 0, 0}};
inline constexpr TLook Green{.Glow = {0, 0.3, 0}, .Matte = {0, 0.6, 0}};

inline constexpr TLamp RedLamp{.Position = {-3, -2, 5}, .Color = {0.9, 0, 0}};
inline constexpr TLamp GreenLamp{.Position = {3, -1, 5}, .Color = {0, 0.9, 0}};
inline constexpr TLamp Sun{
    .Position = {-2e3, -3e3, 3e3}, .Color = {0.8, 0.8, 0.8}, .IsAimed = false};

/// The eye looks down on it.
inline void AddGround(TStage& stage) {
    stage.SetEye({{2, -9, 6}, {0, 0, 0.5}});
    stage.AddSheet({.Scale = {9, 9, 1}}, Ground);
}

/// The letter U of 3 by 3, in the plane z = 0.
inline const TCorners OutlineOfU{{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {2, 3, 0},
                                 {2, 1, 0}, {1, 1, 0}, {1, 3, 0}, {0, 3, 0}};

/// The letter as a solid of 1 by 1 by 1/3.
inline TAdded<TZEPMesh> AddU(TStage& stage, TPlace place, const TLook& look, int parent = NoPiece) {
    const TVector third{1.0 / 3, 1.0 / 3, 1.0 / 3};
    place.Scale = place.Scale * third;
    TCorners corners = OutlineOfU;
    for (const TVector& corner : OutlineOfU) corners.push_back(corner + TVector{0, 0, 1});
    TTriangles triangles;
    for (const auto& [a, b, c] :
         TTriangles{{1, 2, 3}, {1, 3, 4}, {0, 1, 4}, {0, 4, 5}, {0, 5, 6}, {0, 6, 7}}) {
        triangles.push_back({c, b, a});
        triangles.push_back({a + 8, b + 8, c + 8});
    }
    for (int i = 0; i < 8; ++i) {
        const int next = (i + 1) % 8;
        triangles.push_back({i, next, next + 8});
        triangles.push_back({i, next + 8, i + 8});
    }
    return stage.AddMesh(corners, triangles, place, look, parent);
}

} // namespace ZEP::Tracing
