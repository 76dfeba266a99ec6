#pragma once

#include "tests/tracing/Shapes.h"

#include <utility>
#include <vector>

namespace ZEP::Tracing {

struct TLook {
    TVector Glow{};  ///< without any light
    TVector Matte{}; ///< how much of a light's colours comes back
    bool Casts = false;
    bool Receives = false;
    double Mirror = 0; ///< part of what its front mirrors in what is seen of it
};

struct TPiece {
    TPiece(const TFrame& frame, TShape shape, const TLook& look)
        : Shape(std::move(shape)), Look(look) {
        SetFrame(frame);
    }
    void SetFrame(const TFrame& frame) {
        Frame = frame;
        Inner = frame.Inverse();
    }

    TFrame Frame, Inner;
    TShape Shape;
    TLook Look;
    bool IsCarved = false;
};

enum class TSetOperation { Union, Common, Difference };

/// Two pieces as one solid: the second one without the first for a difference.
struct TCarving {
    TSetOperation Operation;
    int First, Second;
};

/// One that is not aimed lights all from where its position lies as seen from the origin.
struct TLamp {
    TVector Position;
    TVector Color;
    bool IsAimed = true;
    bool Casts = true;
    bool IsExact = false; ///< parts of a caster cast for themselves
};

struct TEye {
    TVector Position, Target;
    double Field = 40; ///< from the lower to the upper edge, in degrees
};

enum class TMethod { NoShadows, Subtracted, Accumulated };

/// What is seen of a surface. Where this is the same in two places, so is the colour, nearly.
struct TSeen {
    int Piece = -1; ///< -1: the background
    int Facet = 0;
    unsigned Lit = 0; ///< a bit for each lamp that reaches it
    bool operator==(const TSeen&) const = default;
};

struct TSample {
    TSeen First{}, Mirrored{};
    unsigned Missing = 0; ///< lamps that a shadow takes a good deal of
    TVector Color{};
    [[nodiscard]] bool IsLike(const TSample& other) const {
        return First == other.First && Mirrored == other.Mirrored;
    }
};

/// What is to be seen, computed ray by ray from the numbers of a scene.
class TTracer {
public:
    static constexpr double GoodDeal = 0.1; // of a channel

    std::vector<TPiece> Pieces;
    std::vector<TCarving> Carvings;
    std::vector<TLamp> Lamps;
    TVector Background;
    /// The accumulation buffer adds light, of which colours are a root, not the numbers of colours.
    bool AddsLight = false;
    TMethod Method = TMethod::NoShadows;

    /// \param x, y  of the picture's width and height, from the upper left corner
    [[nodiscard]] TSample Trace(const TEye& eye, double x, double y, double aspect) const;
    /// Of a lamp that casts any, there or as near as that along an axis.
    [[nodiscard]] bool IsInShadow(const TVector& point, double near) const;

private:
    [[nodiscard]] TSample Trace(const TRay& ray) const;
    [[nodiscard]] TCrossing Hit(const TRay& ray) const;
    void CrossPiece(const TRay& ray, int number, TCrossings& crossings) const;
    void CrossCarving(const TRay& ray, const TCarving& carving, TCrossings& crossings) const;
    [[nodiscard]] bool IsBlocked(const TVector& point, const TLamp& lamp) const;
    [[nodiscard]] unsigned Blocked(const TLook& look, const TVector& point,
                                   const std::vector<TVector>& lights) const;
    [[nodiscard]] unsigned Missing(const TLook& look, const std::vector<TVector>& lights,
                                   unsigned blocked) const;
    [[nodiscard]] std::size_t ImageCount() const;
    [[nodiscard]] TVector Average(const std::vector<TVector>& images) const;
    [[nodiscard]] TSample Mirrored(const TRay& ray, int mirror) const;
    [[nodiscard]] std::vector<TVector> Images(const TLook& look, const std::vector<TVector>& lights,
                                              unsigned blocked) const;
};

} // namespace ZEP::Tracing
