#include "tests/objects/InvalidationCounter.h"
#include <zep/ZEPObjects.h>
#include <zep/framework/Property.h>
#include <zep/framework/Registry.h>

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
