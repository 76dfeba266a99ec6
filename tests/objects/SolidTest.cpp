#include "tests/objects/InvalidationCounter.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/framework/Property.h>
#include <zep/framework/Registry.h>

#include <QGuiApplication>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace ZEP;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr int Most = std::numeric_limits<int>::max();
constexpr int Least = std::numeric_limits<int>::min();

std::unique_ptr<TComponent> Create(const char* type) {
    const auto* entry = TClassRegistry::Instance().Find(QString::fromLatin1(type));
    return std::unique_ptr<TComponent>(entry ? entry->Make(nullptr) : nullptr);
}

} // namespace

TEST(Solid, AllClassesStandOnThePalette) {
    for (const char* type : {"TZEPBox", "TZEPLegendBox", "TZEPSphere", "TZEPCone", "TZEPTorus",
                             "TZEPTeapot", "TZEPOctahedron", "TZEPIcosahedron", "TZEPDodecahedron",
                             "TZEPNode", "TZEPLight", "TZEPLabel", "TZEPHeightField", "TZEPUser"}) {
        const std::unique_ptr<TComponent> component = Create(type);
        ASSERT_TRUE(component) << type;
        EXPECT_EQ(component->ClassName().toStdString(), type);
    }
}

TEST(Solid, PublishedPropertiesStandInTheirOrder) {
    const std::pair<const char*, QStringList> cases[] = {
        {"TZEPBox", {"SlicesX", "SlicesY", "SlicesZ", "Parts"}},
        {"TZEPSphere", {"Smooth", "Slices", "Stacks"}},
        {"TZEPCone", {"Smooth", "Radius1", "Radius2", "Slices", "Stacks", "Parts"}},
        {"TZEPTorus", {"Smooth", "Radius1", "Radius2", "Sides", "Rings"}},
        {"TZEPTeapot", {"Segments", "Parts"}},
        {"TZEPLight",
         {"Color", "Visible", "CastShadows", "Position", "PositionObject", "Target", "TargetObject",
          "Exponent", "Cutoff", "Attenuation", "Directional", "ExactShadows"}}};
    for (const auto& [type, expected] : cases) {
        QStringList names;
        for (const QMetaProperty& p : PublishedProperties(*Create(type)->metaObject()))
            names << QLatin1String(p.name());
        EXPECT_EQ(names.mid(names.size() - expected.size()), expected) << type;
    }
}

TEST(Solid, NumbersAreKeptWithinTheirBounds) {
    struct Case {
        const char *Type, *Property;
        QVariant Set, Expected;
    };
    for (const Case& c :
         {Case{"TZEPBox", "SlicesX", 0, 1},     {"TZEPBox", "SlicesY", Least, 1},
          {"TZEPBox", "SlicesZ", Most, 1000},   {"TZEPBox", "SlicesZ", 7, 7},
          {"TZEPSphere", "Slices", Most, 1000}, {"TZEPSphere", "Stacks", Most, 1000},
          {"TZEPSphere", "Slices", -3, -3},     {"TZEPCone", "Slices", 2, 3},
          {"TZEPCone", "Slices", Most, 1000},   {"TZEPCone", "Stacks", -9, 1},
          {"TZEPCone", "Stacks", Most, 1000},   {"TZEPCone", "Radius1", -1.0, 0.0},
          {"TZEPCone", "Radius2", NaN, 0.0},    {"TZEPCone", "Radius2", Infinity, 0.0},
          {"TZEPTorus", "Radius1", NaN, 0.0},   {"TZEPTorus", "Radius2", -2.0, 0.0},
          {"TZEPTorus", "Rings", Most, 1000},   {"TZEPTorus", "Sides", Least, Least},
          {"TZEPTeapot", "Segments", 0, 1},     {"TZEPTeapot", "Segments", Most, 100},
          {"TZEPHeightField", "SlicesX", 0, 1}, {"TZEPHeightField", "SlicesY", Most, 1000}}) {
        const std::unique_ptr<TComponent> component = Create(c.Type);
        component->setProperty(c.Property, c.Set);
        EXPECT_EQ(component->property(c.Property), c.Expected) << c.Type << '.' << c.Property;
    }
    TZEPBox box;
    box.SetSlices(3, 9);
    box.SetSlices(-1, 9);
    EXPECT_EQ(std::max({box.SlicesX(), box.SlicesY(), box.SlicesZ()}), 1);
}

TEST(Solid, OnlyChangesInvalidate) {
    InvalidationCounter panel;
    TZEPBox box;
    TZEPSphere sphere;
    panel.Watch(box);
    panel.Watch(sphere);
    for (int i = 0; i < 2; ++i) {
        box.SetSlices(1, 4);
        box.SetParts(bpTop);
        sphere.SetSlices(8);
        sphere.SetSmooth(true);
    }
    EXPECT_EQ(panel.Count, 4);
}

TEST(Solid, BoundsFollowTheRadii) {
    struct Case {
        double Radius1, Radius2;
        TGLArrayd3 Cone, Torus; ///< upper corners; the lower ones are their negatives
    };
    for (const Case& c : {Case{0, 0, {0, 0, 0.5}, {0, 0, 0}},
                          {2, 0.5, {2, 2, 0.5}, {2.5, 2.5, 0.5}},
                          {1, 3, {3, 3, 0.5}, {4, 4, 3}}}) {
        TZEPCone cone;
        TZEPTorus torus;
        cone.SetRadius1(c.Radius1);
        cone.SetRadius2(c.Radius2);
        torus.SetRadius1(c.Radius1);
        torus.SetRadius2(c.Radius2);
        EXPECT_EQ(cone.GetMax(), c.Cone);
        EXPECT_EQ(cone.GetMin(), (TGLArrayd3{-c.Cone[0], -c.Cone[1], -c.Cone[2]}));
        EXPECT_EQ(torus.GetMax(), c.Torus);
        EXPECT_EQ(torus.GetMin(), (TGLArrayd3{-c.Torus[0], -c.Torus[1], -c.Torus[2]}));
    }
    EXPECT_EQ(TZEPTeapot().GetMin(), (TGLArrayd3{-1.5, -1, -0.75}));
    EXPECT_EQ(TZEPTeapot().GetMax(), (TGLArrayd3{1.75, 1, 0.85}));
    EXPECT_EQ(TZEPBox().GetRadius(), std::numbers::sqrt2);
}

TEST(Solid, ANodesBoxIsThatOfItsContents) {
    TZEPNode node;
    EXPECT_EQ(node.GetMin(), (TGLArrayd3{1000, 1000, 1000}));
    EXPECT_EQ(node.GetMax(), (TGLArrayd3{-1000, -1000, -1000}));
    auto* inner = new TZEPNode;
    inner->SetParentComponent(&node);
    inner->XForm()->Translate()->SetData(5, 0, 0);
    EXPECT_EQ(node.GetMax(), (TGLArrayd3{-1000, -1000, -1000})) << "an empty node within";
    auto* box = new TZEPBox;
    box->SetParentComponent(inner);
    box->XForm()->Scale()->SetData(2, 4, 6);
    auto* onBox = new TZEPBox;
    onBox->SetParentComponent(box);
    onBox->XForm()->Translate()->SetData(0, 1, 0);
    EXPECT_EQ(node.GetMin(), (TGLArrayd3{4, -2, -3}));
    EXPECT_EQ(node.GetMax(), (TGLArrayd3{6, 6, 3}));
    node.XForm()->Translate()->SetData(0, 0, 9);
    EXPECT_EQ(node.GetMax(), (TGLArrayd3{6, 6, 3})) << "in the node's own frame";
}

TEST(Solid, LabelsWithoutFontsAreEmpty) {
    ASSERT_EQ(qobject_cast<QGuiApplication*>(QCoreApplication::instance()), nullptr);
    TZEPLabel label;
    label.SetCaption(QStringLiteral("text"));
    EXPECT_EQ(label.GetMax(), zero3d);
}
