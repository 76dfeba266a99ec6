#include <zep/scene/Geom.h>

#include "tests/Cases.h"
#include "tests/Words.h"
#include <zep/scene/Vectors.h>

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <random>

namespace ZEP {
namespace {

using std::numbers::pi;
using testing::DoubleNear;
using testing::Pointwise;

MATCHER(IsClose, "") {
    return std::abs(std::get<0>(arg) - std::get<1>(arg)) < 1e-12;
}

auto Near(const TGLArrayd3& expected) {
    return Pointwise(IsClose(), expected);
}

void ExpectNear(const TGLMatrixd4& actual, const TGLMatrixd4& expected) {
    for (std::size_t i = 0; i < 4; ++i) EXPECT_THAT(actual[i], Pointwise(IsClose(), expected[i]));
}

/// Numbers between -5 and 5, the same in every run.
class Numbers {
public:
    double operator()() { return m_range(m_engine); }
    TGLArrayd3 Vector() { return {(*this)(), (*this)(), (*this)()}; }
    TGLMatrixd4 Rigid() {
        TGLMatrixd4 m = idd;
        Translatedv(Vector(), m);
        const TGLArrayd3 axis = Vector();
        Rotated(100 * (*this)(), axis[0], axis[1], axis[2], m);
        Translatedv(Vector(), m);
        return m;
    }

private:
    std::mt19937 m_engine{1};
    std::uniform_real_distribution<double> m_range{-5, 5};
};

template <class TNumbers>
std::string Written(const TNumbers& v) {
    QByteArray text;
    for (const double number : v)
        text += ' ' + QByteArray::number(std::abs(number) < 1e-12 ? 0.0 : number, 'g', 13);
    return text.trimmed().toStdString();
}

/// What becomes of a matrix of the numbers from 1 to 16, or of the unit matrix.
std::string Changed(const TWords& words) {
    const TGLArrayd3 v{words.Number(3), words.Number(4), words.Number(5)};
    TGLMatrixd4 m = idd;
    if (words.Verb() == "counting")
        m = {{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}};
    if (words.At(1) == "scale") Scaledv(v, m);
    if (words.At(1) == "translate") Translatedv(v, m);
    if (words.At(1) == "rotate") Rotated(words.Number(2), v[0], v[1], v[2], m);
    std::string text;
    for (const TGLArrayd4& row : m) text += (text.empty() ? "" : ", ") + Written(row);
    return text;
}

TEST(Geom, AnglesSpheresAndMatricesAreAsTheyAreWrittenDown) {
    ExpectCases("geometry.txt", [](const TCase& c) {
        return EachLine(c, [](const std::string& line) {
            const TWords words(line);
            const double x = words.Number(1);
            if (words.Verb() == "angle")
                return (QByteArray::number(NormAngle180(x) + 0, 'g', 17) + ' ' +
                        QByteArray::number(NormAngle360(x) + 0, 'g', 17))
                    .toStdString();
            if (words.Verb() != "sphere") return Changed(words);
            TGLArrayd3 v{x, words.Number(2), words.Number(3)};
            OrthoToSphered(v, v);
            const std::string sphere = Written(v);
            SphereToOrthod(v, v);
            return sphere + ", back " + Written(v);
        });
    });
}

TEST(Geom, SphericalCoordinatesOfTinyVectorsAreNumbers) {
    for (double z = 1e-150; z > 0; z *= 0.37) {
        TGLArrayd3 s;
        OrthoToSphered({0, 0, -z}, s);
        EXPECT_FALSE(std::isnan(s[2])) << z;
    }
}

TEST(Geom, TriangleGivesUnitNormalAndPlaneThroughItsCorners) {
    Numbers number;
    for (int i = 0; i < 50; ++i) {
        const TGLArrayd3 p1 = number.Vector();
        const TGLArrayd3 p2 = number.Vector();
        const TGLArrayd3 p3 = number.Vector();
        TGLArrayd4 plane;
        InitPlaned(p1, p2, p3, plane);
        const TGLArrayd3 normal{plane[0], plane[1], plane[2]};
        EXPECT_NEAR(Dotd(normal, normal), 1, 1e-12);
        for (const TGLArrayd3& p : {p1, p2, p3}) EXPECT_NEAR(Dotd(normal, p) + plane[3], 0, 1e-12);
    }
    TGLArrayd3 up;
    CalcNormald(zero3d, {5, 0, 0}, {0, 3, 0}, up);
    EXPECT_EQ(up, unitz); // counter-clockwise seen from above
}

TEST(Geom, FlatTrianglesAndZeroVectorsStayZero) {
    TGLArrayd3 normal = unitx;
    CalcNormald({1, 1, 1}, {2, 2, 2}, {3, 3, 3}, normal);
    EXPECT_EQ(normal, zero3d);
    TGLArrayd4 plane{1, 1, 1, 1};
    InitPlaned({1, 1, 1}, {1, 1, 1}, {3, 0, 3}, plane);
    EXPECT_EQ(plane, (TGLArrayd4{0, 0, 0, 0}));
    TGLArrayd3 v = zero3d;
    Normalized(v);
    EXPECT_EQ(v, zero3d);
}

TEST(Geom, CrossProductsMayWriteOverAnOperand) {
    TGLArrayd3 d = unitx;
    CrossProdd(d, unity, d);
    EXPECT_EQ(d, unitz);
    CrossProdd(unity, d, d);
    EXPECT_EQ(d, unitx);
    TGLArrayf3 f{0, 2, 0};
    CrossProdf(f, {0, 0, 3}, f);
    EXPECT_EQ(f, (TGLArrayf3{6, 0, 0}));
}

TEST(Geom, IdentityIsExact) {
    EXPECT_TRUE(IsIdentityd(idd));
    for (std::size_t i = 0; i < 16; ++i) {
        TGLMatrixd4 m = idd;
        double& element = m[i / 4][i % 4];
        element = element == 0 ? 1e-16 : std::nextafter(1.0, 2.0);
        EXPECT_FALSE(IsIdentityd(m)) << i;
    }
}

TEST(Geom, ProductActsRightHandFirstAndMayWriteOverAFactor) {
    Numbers number;
    for (int i = 0; i < 20; ++i) {
        const TGLMatrixd4 a = number.Rigid();
        TGLMatrixd4 b = number.Rigid();
        Scaledv(number.Vector(), b);
        TGLMatrixd4 c;
        MultMatrixd(a, b, c);
        TGLArrayd3 direct = number.Vector();
        TGLArrayd3 steps = direct;
        Xformd(c, direct);
        Xformd(b, steps);
        Xformd(a, steps);
        EXPECT_THAT(direct, Pointwise(DoubleNear(1e-9), steps));
        TGLMatrixd4 overA = a;
        MultMatrixd(overA, b, overA);
        EXPECT_EQ(overA, c);
        TGLMatrixd4 overB = b;
        MultMatrixd(a, overB, overB);
        EXPECT_EQ(overB, c);
    }
}

/// Rotation of a point by Rodrigues' formula, apart from any matrix.
TGLArrayd3 Turned(const TGLArrayd3& v, double degrees, TGLArrayd3 axis) {
    Normalized(axis);
    const double theta = degrees * pi / 180;
    TGLArrayd3 side;
    CrossProdd(axis, v, side);
    const double along = Dotd(axis, v) * (1 - std::cos(theta));
    return v * std::cos(theta) + side * std::sin(theta) + axis * along;
}

TEST(Geom, RotationTurnsPointsAboutItsAxis) {
    Numbers number;
    for (int i = 0; i < 100; ++i) {
        const TGLArrayd3 axis = number.Vector();
        const double angle = 150 * number();
        const TGLArrayd3 shift = number.Vector();
        TGLMatrixd4 m = idd;
        Translatedv(shift, m);
        Rotated(angle, axis[0], axis[1], axis[2], m);
        TGLArrayd3 v = number.Vector();
        const TGLArrayd3 expected = Turned(v, angle, axis) + shift;
        Xformd(m, v);
        EXPECT_THAT(v, Near(expected));
    }
}

TEST(Geom, InverseUndoesRigidTransformsOnly) {
    Numbers number;
    for (int i = 0; i < 50; ++i) {
        const TGLMatrixd4 m = number.Rigid();
        TGLMatrixd4 product = m;
        InverseMatrixd(product);
        MultMatrixd(m, product, product);
        ExpectNear(product, idd);
    }
    TGLMatrixd4 scaled = idd;
    Scaled(2, 2, 2, scaled);
    InverseMatrixd(scaled);
    EXPECT_EQ(scaled[0][0], 2); // transposed, not divided
}

TEST(Geom, MirrorKeepsItsPlaneAndUndoesItself) {
    Numbers number;
    for (int i = 0; i < 50; ++i) {
        TGLArrayd3 n = number.Vector();
        Normalized(n);
        const double d = number();
        TGLMatrixd4 m;
        MirrorMatrixd({n[0], n[1], n[2], d}, m);
        const TGLArrayd3 v = number.Vector();
        const double distance = Dotd(n, v) + d;
        TGLArrayd3 image = v;
        Xformd(m, image);
        EXPECT_THAT(image, Near(v - 2 * distance * n));
        Xformd(m, image);
        EXPECT_THAT(image, Near(v));
    }
}

} // namespace
} // namespace ZEP
