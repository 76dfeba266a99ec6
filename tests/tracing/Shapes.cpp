#include "tests/tracing/Shapes.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ZEP::Tracing {

namespace {

void CrossBall(const TRay& ray, TCrossings& crossings) {
    const double a = Dot(ray.Along, ray.Along);
    const double b = Dot(ray.Along, ray.From) / a;
    const double root = b * b - (Dot(ray.From, ray.From) - 0.25) / a;
    if (root <= 0) return;
    for (const double side : {-1.0, 1.0}) {
        const double at = -b + side * std::sqrt(root);
        crossings.push_back({.At = at, .Normal = ray.Point(at), .Enters = side < 0});
    }
}

void CrossBox(const TRay& ray, TCrossings& crossings) {
    TCrossing in{.At = -std::numeric_limits<double>::infinity()};
    TCrossing out{.At = std::numeric_limits<double>::infinity(), .Enters = false};
    int axis = 0;
    for (double TVector::*const c : {&TVector::X, &TVector::Y, &TVector::Z}) {
        ++axis;
        const double slope = ray.Along.*c;
        const double first = (-0.5 - ray.From.*c) / slope;
        const double second = (0.5 - ray.From.*c) / slope;
        const auto face = [&](TCrossing& crossing, double at, double side) {
            crossing.At = at;
            crossing.Normal = {};
            crossing.Normal.*c = side;
            crossing.Facet = side < 0 ? -axis : axis;
        };
        const double sign = slope > 0 ? 1 : -1;
        if (std::min(first, second) > in.At) face(in, std::min(first, second), -sign);
        if (std::max(first, second) < out.At) face(out, std::max(first, second), sign);
    }
    if (in.At < out.At) crossings.insert(crossings.end(), {in, out});
}

struct TTriangle {
    TVector Corner, First, Second, Normal;
};

void CrossTriangle(const TRay& ray, const TTriangle& t, int facet, TCrossings& crossings) {
    const double steep = Dot(ray.Along, t.Normal);
    if (steep == 0) return;
    const TVector from = ray.From - t.Corner;
    const double at = -Dot(from, t.Normal) / steep;
    const TVector point = from + ray.Along * at;
    const double size = Dot(t.Normal, t.Normal);
    const double u = Dot(Cross(point, t.Second), t.Normal) / size;
    const double v = Dot(Cross(t.First, point), t.Normal) / size;
    if (u < 0 || v < 0 || u + v > 1) return;
    crossings.push_back({.At = at, .Normal = t.Normal, .Facet = facet, .Enters = steep < 0});
}

bool IsWithin(const TCorners& outline, double x, double y) {
    bool within = false;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const TVector& a = outline[i];
        const TVector& b = outline[(i + 1) % outline.size()];
        if ((a.Y > y) == (b.Y > y)) continue;
        if (x < a.X + (b.X - a.X) * (y - a.Y) / (b.Y - a.Y)) within = !within;
    }
    return within;
}

} // namespace

TShape Ball() {
    return CrossBall;
}

TShape Box() {
    return CrossBox;
}

TShape Flat(std::function<bool(double x, double y)> holds, bool isOneSided) {
    return [holds = std::move(holds), isOneSided](const TRay& ray, TCrossings& crossings) {
        const double at = -ray.From.Z / ray.Along.Z;
        const TVector point = ray.Point(at);
        const bool isAbove = ray.Along.Z < 0;
        if ((isOneSided && !isAbove) || !holds(point.X, point.Y)) return;
        crossings.push_back(
            {.At = at, .Normal = {0, 0, isAbove ? 1.0 : -1.0}, .Facet = isAbove ? 0 : 1});
    };
}

TShape Flat(const TCorners& outline) {
    return Flat([outline](double x, double y) { return IsWithin(outline, x, y); });
}

TShape Triangles(const TCorners& corners, const TTriangles& triangles) {
    std::vector<TTriangle> all;
    for (const auto& [a, b, c] : triangles) {
        const auto corner = [&](int i) { return corners[static_cast<std::size_t>(i)]; };
        TTriangle& t = all.emplace_back(
            TTriangle{corner(a), corner(b) - corner(a), corner(c) - corner(a), {}});
        t.Normal = Cross(t.First, t.Second);
    }
    return [all](const TRay& ray, TCrossings& crossings) {
        int facet = 0;
        for (const TTriangle& triangle : all) CrossTriangle(ray, triangle, facet++, crossings);
    };
}

} // namespace ZEP::Tracing
