#include "tests/converters/threeds/ThreeDSFixture.h"

#include <QFile>

#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

namespace ZEP {
namespace {

using namespace F3DS;

struct TRing {
    float Radius, Height;
    const char* Material; ///< of the band above it
};

/// Collects the points and the faces of a mesh, each face in a material.
class TModel {
public:
    int Point(float x, float y, float z, float u = 0, float v = 0) {
        // Rounded, so that every compiler writes the same file.
        for (const float value : {x, y, z}) m_points += Floats({std::round(value * 1000) / 1000});
        m_texCoords += Floats({u, v});
        return m_pointCount++;
    }
    void Face(int a, int b, int c, const std::string& material) {
        for (const int word : {a, b, c, 7}) m_faces += Words({static_cast<std::uint16_t>(word)});
        auto group = std::ranges::find(m_groups, material, &TGroup::Material);
        if (group == m_groups.end()) group = m_groups.insert(group, {material, {}});
        group->Faces += Words({static_cast<std::uint16_t>(m_faceCount++)});
    }
    /// Corners counter-clockwise.
    void Quad(int a, int b, int c, int d, const std::string& material) {
        Face(a, b, c, material);
        Face(a, c, d, material);
    }
    /// A body of rings about a vertical axis through (x, y).
    void Lathe(float x, float y, int sides, const std::vector<TRing>& rings) {
        const int first = m_pointCount;
        for (const TRing& ring : rings)
            for (int i = 0; i < sides; ++i) {
                const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(i) /
                                    static_cast<float>(sides);
                Point(x + ring.Radius * std::cos(angle), y + ring.Radius * std::sin(angle),
                      ring.Height);
            }
        for (int r = 0; r + 1 < static_cast<int>(rings.size()); ++r)
            for (int i = 0; i < sides; ++i) {
                const int low = first + r * sides;
                const int next = (i + 1) % sides;
                Quad(low + i, low + next, low + sides + next, low + sides + i,
                     rings[static_cast<std::size_t>(r)].Material);
            }
    }
    /// Four walls with the picture on each, and a roof with two slopes.
    void House(float x, float y, float width, float depth, float height, const char* wall,
               const char* roof) {
        const float xs[] = {x, x + width, x + width, x, x};
        const float ys[] = {y, y, y + depth, y + depth, y};
        for (int i = 0; i < 4; ++i) {
            const int a = Point(xs[i], ys[i], 0, 0, 0);
            const int b = Point(xs[i + 1], ys[i + 1], 0, 2, 0);
            const int c = Point(xs[i + 1], ys[i + 1], height, 2, 1);
            const int d = Point(xs[i], ys[i], height, 0, 1);
            Quad(a, b, c, d, wall);
        }
        const float top = height + 0.45F * depth;
        const int left = Point(x, y + depth / 2, top, 1, 1.4F);
        const int right = Point(x + width, y + depth / 2, top, 1, 1.4F);
        int corners[4];
        for (int i = 0; i < 4; ++i) corners[i] = Point(xs[i], ys[i], height);
        Quad(corners[0], corners[1], right, left, roof);
        Quad(corners[2], corners[3], left, right, roof);
        Face(corners[3], corners[0], left, wall);
        Face(corners[1], corners[2], right, wall);
    }
    [[nodiscard]] std::string Mesh(const std::string& name) const {
        std::string groups;
        for (const TGroup& group : m_groups)
            groups +=
                Chunk(0x4130, Name(group.Material) + Count(group.Faces.size() / 2) + group.Faces);
        const auto points = static_cast<std::size_t>(m_pointCount);
        const auto faces = static_cast<std::size_t>(m_faceCount);
        return F3DS::Mesh(name, Chunk(0x4110, Count(points) + m_points) +
                                    Chunk(0x4140, Count(points) + m_texCoords) +
                                    Chunk(0x4120, Count(faces) + m_faces + groups));
    }

private:
    struct TGroup {
        std::string Material, Faces;
    };
    static std::string Count(std::size_t count) {
        return Words({static_cast<std::uint16_t>(count)});
    }

    std::string m_points, m_texCoords, m_faces;
    std::vector<TGroup> m_groups;
    int m_pointCount = 0;
    int m_faceCount = 0;
};

/// Dull where no light falls, so that lights need not be weak.
std::string Paint(const std::string& name, std::array<std::uint8_t, 3> color,
                  std::uint16_t shininess = 0, const std::string& more = {}) {
    const auto part = [&](std::size_t i) { return static_cast<std::uint8_t>(color[i] * 2 / 5); };
    return Material(name, Color24(0xA010, {part(0), part(1), part(2)}) +
                              Color24(0xA020, {color[0], color[1], color[2]}) +
                              Color24(0xA030, {60, 60, 60}) + Percent(0xA040, shininess) + more);
}

std::string Camera(const std::string& name, std::initializer_list<float> places) {
    return Object(
        name, Chunk(0x4700, Floats(places) + Floats({0, 50}) + Chunk(0x4720, Floats({1, 500}))));
}

/// A lighthouse on its rock, and the keeper's house of bricks.
std::string Lighthouse() {
    TModel rock;
    rock.Lathe(0, 0, 14, {{24, -3, "Sea"}, {17, -1.5F, "Rock"}, {14, -0.3F, "Grass"}, {0, 0, ""}});
    TModel tower;
    std::vector<TRing> rings;
    for (int i = 0; i < 6; ++i)
        rings.push_back({3 - 0.22F * static_cast<float>(i), 2.6F * static_cast<float>(i),
                         i % 2 ? "White" : "Red"});
    for (const TRing& ring : std::vector<TRing>{{1.7F, 15.6F, "Iron"},
                                                {2.6F, 15.8F, "Iron"},
                                                {2.6F, 16.2F, "Iron"},
                                                {1.3F, 16.2F, "Iron"},
                                                {1.3F, 18.4F, "Iron"},
                                                {1.8F, 18.4F, "Red"},
                                                {0, 20, ""}})
        rings.push_back(ring);
    rings[9].Material = "Glass";
    tower.Lathe(0, 0, 28, rings);
    TModel lamp;
    lamp.Lathe(0, 0, 12,
               {{0, 16.4F, "Lamp"}, {0.6F, 17, "Lamp"}, {0.6F, 17.6F, "Lamp"}, {0, 18.2F, ""}});
    TModel house;
    house.House(4.5F, -4, 7, 5, 3, "Bricks", "Slate");
    const std::string bricks =
        Chunk(0xA200, Chunk(0xA300, Name("BRICKS.JPG")) + Chunk(0xA354, Floats({1})));
    return File(
        Chunk(0x0100, Floats({1})) + Color24(0x1200, {126, 160, 196}) +
        Color24(0x2100, {70, 70, 80}) + Paint("Sea", {40, 90, 130}, 60) +
        Paint("Rock", {120, 110, 100}) + Paint("Grass", {90, 130, 60}) +
        Paint("Red", {190, 40, 35}, 30) + Paint("White", {235, 232, 225}, 30) +
        Paint("Iron", {60, 62, 66}, 50) + Paint("Slate", {70, 75, 85}, 20) +
        Paint("Bricks", {150, 60, 40}, 0, bricks) +
        Paint("Lamp", {255, 240, 170}, 0, Percent(0xA080, 100)) +
        Paint("Glass", {190, 215, 225}, 90, Percent(0xA050, 60)) + rock.Mesh("Rock") +
        tower.Mesh("Tower") + lamp.Mesh("Lamp") + house.Mesh("House") +
        Object("Sun",
               Chunk(0x4600, Floats({30, -50, 60}) + Chunk(0x0010, Floats({0.8F, 0.77F, 0.7F})))) +
        Object("Beam", Chunk(0x4600, Floats({0, -3, 17}) + Chunk(0x0011, Bytes({120, 100, 50})) +
                                         Chunk(0x4610, Floats({8, -2, 3, 20, 50})))) +
        Camera("From the sea", {22, -30, 9, 2, 0, 8}) +
        Camera("From above", {-14, -18, 34, 3, 0, 6}));
}

/// Two wheels that mesh, on a plate: the teeth in another material than the sides.
std::string Gears() {
    const auto wheel = [](float x, int teeth, float turn) {
        TModel model;
        const float radius = static_cast<float>(teeth) / 2;
        const int corners = 4 * teeth;
        for (const float z : {0.0F, 2.0F}) {
            model.Point(x, 0, z);
            for (int i = 0; i < corners; ++i) {
                const float angle = 2 * std::numbers::pi_v<float> * (static_cast<float>(i) + turn) /
                                    static_cast<float>(corners);
                const float r = radius + (i % 4 < 2 ? 0.9F : -1);
                model.Point(x + r * std::cos(angle), r * std::sin(angle), z);
            }
        }
        const int top = corners + 1;
        for (int i = 0; i < corners; ++i) {
            const int next = (i + 1) % corners;
            model.Face(0, 1 + next, 1 + i, "Steel");
            model.Face(top, top + 1 + i, top + 1 + next, "Steel");
            model.Quad(1 + i, 1 + next, top + 1 + next, top + 1 + i, "Brass");
        }
        model.Lathe(x, 0, 20, {{1.6F, 2, "Dark"}, {1.6F, 3.5F, "Dark"}, {0, 3.5F, ""}});
        return model;
    };
    TModel plate;
    plate.Lathe(3, 0, 40, {{24, -1.5F, "Wood"}, {24, -0.5F, "Wood"}, {0, -0.5F, ""}});
    return File(Color24(0x1200, {40, 44, 52}) + Color24(0x2100, {70, 70, 70}) +
                Paint("Steel", {150, 155, 165}, 60) + Paint("Brass", {190, 150, 60}, 40) +
                Paint("Dark", {50, 50, 55}, 20) + Paint("Wood", {110, 74, 44}) +
                wheel(-6, 20, -0.5F).Mesh("Large wheel") +
                wheel(10, 12, -2.5F).Mesh("Small wheel") + plate.Mesh("Plate") +
                Object("Lamp", Chunk(0x4600, Floats({-20, -30, 50}) +
                                                 Chunk(0x0010, Floats({0.8F, 0.8F, 0.75F})))) +
                Camera("Near", {7, -40, 33, 1, -1, 0}));
}

struct TShipped {
    const char* Name;
    std::function<std::string()> Make;
    int Objects, Materials;
};

class ThreeDSModels : public ThreeDSTest {};

/// examples/models/ holds what is made here. ZEP_KEEP_MODELS=1 writes it anew.
TEST_F(ThreeDSModels, AreThoseOfTheExamples) {
    const TShipped models[] = {{"lighthouse.3ds", Lighthouse, 8, 10}, {"gears.3ds", Gears, 5, 4}};
    for (const TShipped& model : models) {
        SCOPED_TRACE(model.Name);
        QFile file(QStringLiteral(ZEP_SOURCE "/examples/models/") + QLatin1String(model.Name));
        const std::string bytes = model.Make();
        if (qEnvironmentVariableIsSet("ZEP_KEEP_MODELS")) {
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(QByteArray::fromStdString(bytes));
            file.close();
        }
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_TRUE(file.readAll() == QByteArray::fromStdString(bytes)) << "it is another file";
        Converter.SetFileName(file.fileName());
        EXPECT_EQ(ErrorOfLoading(), "");
        EXPECT_THAT(Passed(), testing::IsEmpty());
        EXPECT_EQ(Scene.GetItemsCount(), model.Objects);
        EXPECT_EQ(Library.Materials()->Count(), model.Materials);
    }
}

} // namespace
} // namespace ZEP
