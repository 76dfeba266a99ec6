#pragma once

#include <cmath>
#include <numbers>

namespace ZEP::Tracing {

struct TVector {
    double X = 0, Y = 0, Z = 0;
};

constexpr TVector operator+(const TVector& a, const TVector& b) {
    return {a.X + b.X, a.Y + b.Y, a.Z + b.Z};
}
constexpr TVector operator*(const TVector& a, double factor) {
    return {a.X * factor, a.Y * factor, a.Z * factor};
}
constexpr TVector operator-(const TVector& a, const TVector& b) {
    return a + b * -1;
}
/// Colours act on each other channel by channel.
constexpr TVector operator*(const TVector& a, const TVector& b) {
    return {a.X * b.X, a.Y * b.Y, a.Z * b.Z};
}
constexpr double Dot(const TVector& a, const TVector& b) {
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}
constexpr TVector Cross(const TVector& a, const TVector& b) {
    return {a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X};
}
inline TVector Unit(const TVector& a) {
    return a * (1 / std::sqrt(Dot(a, a)));
}

/// Passes the points `From + At * Along`.
struct TRay {
    TVector From, Along;

    [[nodiscard]] TVector Point(double at) const { return From + Along * at; }
};

/// Where something stands, in the frame that it stands in: it is scaled, then turned about z, y and
/// x by degrees, then moved.
struct TPlace {
    TVector Move{}, Turn{}, Scale{1, 1, 1};
};

/// The axes and the origin of a frame, as they are seen from the outer one.
struct TFrame {
    TVector X{1, 0, 0}, Y{0, 1, 0}, Z{0, 0, 1}, Origin;

    TFrame() = default;
    TFrame(const TVector& x, const TVector& y, const TVector& z, const TVector& origin)
        : X(x), Y(y), Z(z), Origin(origin) {}
    explicit TFrame(const TPlace& place)
        : X(Turned({place.Scale.X, 0, 0}, place.Turn)),
          Y(Turned({0, place.Scale.Y, 0}, place.Turn)),
          Z(Turned({0, 0, place.Scale.Z}, place.Turn)), Origin(place.Move) {}

    [[nodiscard]] TVector Direction(const TVector& v) const { return X * v.X + Y * v.Y + Z * v.Z; }
    [[nodiscard]] TVector Point(const TVector& v) const { return Origin + Direction(v); }
    [[nodiscard]] TFrame Outer(const TFrame& inner) const {
        return {Direction(inner.X), Direction(inner.Y), Direction(inner.Z), Point(inner.Origin)};
    }
    [[nodiscard]] TRay Ray(const TRay& ray) const {
        return {Point(ray.From), Direction(ray.Along)};
    }
    /// The outer frame as it is seen from this one.
    [[nodiscard]] TFrame Inverse() const {
        const TVector x = Cross(Y, Z);
        const TVector y = Cross(Z, X);
        const TVector z = Cross(X, Y);
        const double scale = 1 / Dot(X, x);
        TFrame inverse(TVector{x.X, y.X, z.X} * scale, TVector{x.Y, y.Y, z.Y} * scale,
                       TVector{x.Z, y.Z, z.Z} * scale, {});
        inverse.Origin = inverse.Direction(Origin) * -1;
        return inverse;
    }
    /// What stands upright on a surface of the outer frame, as it is seen from there.
    [[nodiscard]] TVector OuterNormal(const TVector& normal) const {
        return Unit({Dot(X, normal), Dot(Y, normal), Dot(Z, normal)});
    }

private:
    static void Turn(double& a, double& b, double degrees) {
        const double angle = degrees * std::numbers::pi / 180;
        const double turned = a * std::cos(angle) - b * std::sin(angle);
        b = a * std::sin(angle) + b * std::cos(angle);
        a = turned;
    }
    static TVector Turned(TVector v, const TVector& degrees) {
        Turn(v.X, v.Y, degrees.Z);
        Turn(v.Z, v.X, degrees.Y);
        Turn(v.Y, v.Z, degrees.X);
        return v;
    }
};

} // namespace ZEP::Tracing
