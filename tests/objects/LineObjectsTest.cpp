#include "ZEPObjects.h"
#include "framework/Property.h"
#include "framework/Registry.h"
#include "tests/objects/InvalidationCounter.h"

#include <gmock/gmock.h>

using namespace ZEP;

TEST(LineObjects, AreCreatedByNameAndPublishTheirPropertiesInOrder) {
    const QString base = QStringLiteral("Name Tag Ident XForm Color DrawType Material "
                                        "MaterialIndex Selected Visible Smooth Width");
    struct Case {
        const char* Class;
        const char* Properties;
    };
    for (const Case& c :
         {Case{"TZEPPoint", " P"}, Case{"TZEPLine", " Style P1 P2"},
          Case{"TZEPPolyline", " Style Segments Vertexes ColorVertexes Closed OrigColor InError "
                               "MaxZValue MinZValue DisplayList UseDisplayList"},
          Case{"TZEPArc", " Style Segments StartAngle EndAngle"},
          Case{"TZEPCircle", " Style Segments"}}) {
        const auto* entry = TClassRegistry::Instance().Find(QString::fromLatin1(c.Class));
        ASSERT_TRUE(entry) << c.Class;
        EXPECT_EQ(entry->Group, QStringLiteral("OpenGL"));
        QStringList names;
        for (const QMetaProperty& property : PublishedProperties(*entry->Type))
            names << QString::fromLatin1(property.name());
        EXPECT_EQ(names.join(u' '), base + QString::fromLatin1(c.Properties)) << c.Class;
    }
}

TEST(LineObjects, StartAtTheirDeclaredDefaults) {
    for (const char* name : {"TZEPPoint", "TZEPLine", "TZEPPolyline", "TZEPArc", "TZEPCircle"}) {
        const auto* entry = TClassRegistry::Instance().Find(QString::fromLatin1(name));
        ASSERT_TRUE(entry) << name;
        const std::unique_ptr<TComponent> object(entry->Make(nullptr));
        int checked = 0;
        for (const QMetaProperty& property : PublishedProperties(*entry->Type)) {
            const QVariant declared = DeclaredDefault(*entry->Type, property);
            if (!declared.isValid()) continue;
            ++checked;
            const QVariant value = property.read(object.get());
            if (property.metaType() == QMetaType::fromType<TColor>())
                EXPECT_EQ(value.value<TColor>(), declared.value<TColor>()) << property.name();
            else
                EXPECT_EQ(value.toInt(), declared.toInt()) << name << '.' << property.name();
        }
        EXPECT_GE(checked, 6) << name;
    }
}

TEST(LineObjects, SegmentsAreAtLeastThree) {
    struct Case {
        int Value, Stored;
    };
    for (const Case& c : {Case{1, 3}, Case{-100, 3}, Case{3, 3}, Case{4, 4}, Case{1000, 1000}}) {
        TZEPPolyline polyline;
        TZEPArc arc;
        TZEPCircle circle;
        polyline.SetSegments(c.Value);
        arc.SetSegments(c.Value);
        circle.SetSegments(c.Value);
        EXPECT_EQ(polyline.Segments(), c.Stored);
        EXPECT_EQ(arc.Segments(), c.Stored);
        EXPECT_EQ(circle.Segments(), c.Stored);
    }
}

TEST(LineObjects, BoundsHoldWhatIsDrawn) {
    TGLArrayd3 min;
    TGLArrayd3 max;
    TZEPPoint point;
    point.GetSize(min, max);
    EXPECT_EQ(min, zero3d);
    EXPECT_EQ(max, zero3d);
    point.P()->SetData(1, -2, 3);
    point.GetSize(min, max);
    EXPECT_EQ(min, (TGLArrayd3{1, -2, 3}));
    EXPECT_EQ(max, min);

    TZEPLine line;
    line.P1()->SetData(1, 5, -3);
    line.P2()->SetData(4, 2, -3);
    line.GetSize(min, max);
    EXPECT_EQ(min, (TGLArrayd3{1, 2, -3}));
    EXPECT_EQ(max, (TGLArrayd3{4, 5, -3}));

    const TZEPCircle circle;
    circle.GetSize(min, max);
    EXPECT_EQ(min, (TGLArrayd3{-0.5, -0.5, 0}));
    EXPECT_EQ(max, (TGLArrayd3{0.5, 0.5, 0}));
}

TEST(LineObjects, EndPointsInvalidateAndCountOnlyWhenTheyDiffer) {
    InvalidationCounter counter;
    TZEPLine line;
    counter.Watch(line);
    line.P1()->SetX(0);
    EXPECT_EQ(counter.Count, 0);
    line.P2()->SetX(2);
    EXPECT_EQ(counter.Count, 1);
    EXPECT_NE(line.P1(), line.P2());
    EXPECT_EQ(line.P1()->X(), 0);
}
