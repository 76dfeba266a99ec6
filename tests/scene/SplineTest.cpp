#include <zep/scene/Spline.h>

#include "tests/Cases.h"
#include "tests/Words.h"

#include <cmath>

namespace ZEP {
namespace {

TGLArrayd3 At(TZEPSpline& spline, double t) {
    TGLArrayd3 v{9, 9, 9};
    spline.GetVertex(t, v);
    return v;
}

/// Second difference quotient of coordinate `k` about `t`.
double Bend(TZEPSpline& spline, double t, std::size_t k) {
    constexpr double E = 1e-4;
    return (At(spline, t - E)[k] - 2 * At(spline, t)[k] + At(spline, t + E)[k]) / (E * E);
}

double Slope(TZEPSpline& spline, double t, std::size_t k) {
    constexpr double E = 1e-6;
    return (At(spline, t + E)[k] - At(spline, t - E)[k]) / (2 * E);
}

/// Edits the curve, or, for `at`, answers where it is.
std::string Bent(TZEPSpline& spline, const std::string& line) {
    const TWords words(line);
    const std::string verb = words.Verb();
    if (verb == "add") spline.AddVertex({words.Number(1), words.Number(2), words.Number(3)});
    if (verb == "clear") spline.Clear();
    if (verb == "prepare") spline.Prepare();
    if (verb == "close") spline.SetClosed(true);
    if (verb != "at") return {};
    QByteArray text;
    for (const double number : At(spline, words.Number(1)))
        text += ' ' + QByteArray::number(std::abs(number) < 1e-12 ? 0.0 : number, 'g', 13);
    return text.trimmed().toStdString();
}

TEST(Spline, GoesAsItIsWrittenDown) {
    ExpectCases("spline.txt", [](const TCase& c) {
        TZEPSpline spline;
        return EachLine(c, [&](const std::string& line) { return Bent(spline, line); });
    });
}

TEST(Spline, IsSmoothAtItsPointsAndStraightAtItsEnds) {
    TZEPSpline spline;
    for (const TGLArrayd3& point :
         {TGLArrayd3{0, 0, 0}, {1, 2, -1}, {3, 1, 0}, {4, -2, 2}, {2, -3, 5}, {0, 0, 6}})
        spline.AddVertex(point);
    for (std::size_t k = 0; k < 3; ++k) {
        for (const double knot : {0.2, 0.4, 0.6, 0.8}) {
            EXPECT_NEAR(Slope(spline, knot - 2e-6, k), Slope(spline, knot + 2e-6, k), 2e-3);
            EXPECT_NEAR(Bend(spline, knot - 2e-4, k), Bend(spline, knot + 2e-4, k), 3);
        }
        EXPECT_NEAR(Bend(spline, 2e-4, k), 0, 1);
        EXPECT_NEAR(Bend(spline, 1 - 2e-4, k), 0, 1);
        EXPECT_GT(std::abs(Bend(spline, 0.5, k)), 3) << "the bounds above would not tell";
    }
}

} // namespace
} // namespace ZEP
