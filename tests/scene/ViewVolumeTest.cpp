#include <zep/scene/ViewVolume.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace ZEP {
namespace {

/// As `glFrustum(-1, 1, -1, 1, 1, 11)`: at a distance d, a square of half width d is seen.
constexpr TGLMatrixd4 Frustum{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, -1.2, -1}, {0, 0, -2.2, 0}}};

TEST(ViewVolume, ShowsWhatLiesBetweenItsPlanes) {
    constexpr double Inf = std::numeric_limits<double>::infinity();
    constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
    const TZEPViewVolume volume(Frustum);
    struct TCase {
        const char* Name;
        TGLArrayd3 Min, Max;
        TZEPSeen Seen;
    };
    for (const TCase& c : {
             TCase{"in the middle", {-1, -1, -4}, {1, 1, -2}, TZEPSeen::All},
             TCase{"a point", {4, 0, -5}, {4, 0, -5}, TZEPSeen::All},
             TCase{"a point at the left", {-6, 0, -5}, {-6, 0, -5}, TZEPSeen::Nothing},
             TCase{"across the right", {4, 0, -5}, {6, 1, -5}, TZEPSeen::Part},
             TCase{"right", {5.1, 0, -5}, {6, 1, -4}, TZEPSeen::Nothing},
             TCase{"below", {0, -9, -5}, {1, -6, -4}, TZEPSeen::Nothing},
             TCase{"above", {0, 5.5, -5}, {1, 9, -5}, TZEPSeen::Nothing},
             TCase{"across the near plane", {0, 0, -2}, {0, 0, 3}, TZEPSeen::Part},
             TCase{"before the near plane", {0, 0, -0.9}, {0, 0, 0}, TZEPSeen::Nothing},
             TCase{"behind the eye", {-9, -9, 1}, {9, 9, 20}, TZEPSeen::Nothing},
             TCase{"beyond the far plane", {-1, -1, -20}, {1, 1, -11.1}, TZEPSeen::Nothing},
             TCase{"about all of it", {-99, -99, -99}, {99, 99, 99}, TZEPSeen::Part},
             TCase{"endless", {-Inf, 5, -5}, {Inf, 6, -4}, TZEPSeen::Part},
             TCase{"no number", {NoNumber, 50, -5}, {NoNumber, 60, -4}, TZEPSeen::Part},
         })
        EXPECT_EQ(volume.Shows(c.Min, c.Max), c.Seen) << c.Name;
}

TEST(ViewVolume, AMarginLetsInWhatIsNear) {
    const TGLArrayd3 right{5.4, 0, -5};
    const TGLArrayd3 above{0, 5.4, -5};
    const TGLArrayd3 behind{0, 0, 5};
    const TZEPViewVolume wide(Frustum, 0.1, 0);
    EXPECT_EQ(wide.Shows(right, right), TZEPSeen::All);
    EXPECT_EQ(wide.Shows(above, above), TZEPSeen::Nothing);
    EXPECT_EQ(wide.Shows(behind, behind), TZEPSeen::Nothing);
    EXPECT_EQ(TZEPViewVolume(Frustum, 0, 0.1).Shows(above, above), TZEPSeen::All);
}

TGLArrayd3 RandomPoint(std::mt19937& random, double size) {
    std::uniform_real_distribution<double> number(-size, size);
    return {number(random), number(random), number(random)};
}

bool IsSeen(const TGLMatrixd4& toClip, const TGLArrayd3& p) {
    std::array<double, 4> clip{};
    for (std::size_t k = 0; k < 4; ++k)
        clip[k] = p[0] * toClip[0][k] + p[1] * toClip[1][k] + p[2] * toClip[2][k] + toClip[3][k];
    return std::abs(clip[0]) <= clip[3] && std::abs(clip[1]) <= clip[3] &&
           std::abs(clip[2]) <= clip[3];
}

// Boxes in a turned, shifted and stretched frame against some of their points.
TEST(ViewVolume, AgreesWithPointsInAnInnerFrame) {
    std::mt19937 random(11);
    TGLMatrixd4 matrix = idd;
    Translated(1, 0, -6, matrix);
    Rotated(40, 1, 2, 3, matrix);
    Scaled(1, 2, 0.5, matrix);
    TGLMatrixd4 toClip;
    MultMatrixd(Frustum, matrix, toClip);
    const TZEPViewVolume volume = TZEPViewVolume(Frustum).Within(matrix);
    std::array<int, 3> counts{};
    for (int i = 0; i < 2000; ++i) {
        const TGLArrayd3 from = RandomPoint(random, 10);
        const TGLArrayd3 size = RandomPoint(random, 2);
        TGLArrayd3 min = from, max = from;
        const TGLArrayd3 to{from[0] + size[0], from[1] + size[1], from[2] + size[2]};
        MinBoundsd(min, to);
        MaxBoundsd(max, to);
        const TZEPSeen seen = volume.Shows(min, max);
        ++counts[static_cast<std::size_t>(seen)];
        for (int k = 0; k < 20; ++k) {
            TGLArrayd3 point;
            for (std::size_t axis = 0; axis < 3; ++axis)
                point[axis] =
                    min[axis] + (max[axis] - min[axis]) * static_cast<int>(random() % 101) / 100;
            ASSERT_NE(seen, IsSeen(toClip, point) ? TZEPSeen::Nothing : TZEPSeen::All);
        }
    }
    for (const int count : counts) EXPECT_GT(count, 50);
}

} // namespace
} // namespace ZEP
