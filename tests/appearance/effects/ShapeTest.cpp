#include "tests/objects/InvalidationCounter.h"
#include <zep/appearance/effects/LineShape.h>
#include <zep/framework/Property.h>

#include <gmock/gmock.h>

#include <limits>

using namespace ZEP;

TEST(Shape, WidthsThatAreNoneBecomeOne) {
    struct Case {
        float Value, Stored;
    };
    for (const Case& c : {Case{-2, 1}, Case{3, 3}, Case{0, 0}, Case{0.5F, 0.5F}, Case{-0.0F, 0},
                          Case{std::numeric_limits<float>::quiet_NaN(), 1}}) {
        TZEPShape shape;
        shape.SetWidth(c.Value);
        EXPECT_EQ(shape.Width(), c.Stored) << c.Value;
    }
}

TEST(Shape, EveryNewValueInvalidatesOnce) {
    InvalidationCounter counter;
    TZEPLineShape shape;
    counter.Watch(shape);
    struct Case {
        const char* Name;
        void (*Set)(TZEPLineShape&);
        int Told;
    };
    for (const Case& c : {Case{"width", [](TZEPLineShape& s) { s.SetWidth(3); }, 1},
                          Case{"width of none", [](TZEPLineShape& s) { s.SetWidth(-1); }, 1},
                          Case{"the same width", [](TZEPLineShape& s) { s.SetWidth(-7); }, 0},
                          Case{"style", [](TZEPLineShape& s) { s.SetStyle(psDot); }, 1},
                          Case{"smooth", [](TZEPLineShape& s) { s.SetSmooth(false); }, 1}}) {
        counter.Count = 0;
        c.Set(shape);
        c.Set(shape);
        EXPECT_EQ(counter.Count, c.Told) << c.Name;
    }
}

TEST(Shape, OnlyLineShapesStartSmoothedAndSaySo) {
    const TZEPShape shape;
    const TZEPLineShape line;
    EXPECT_FALSE(shape.Smooth());
    EXPECT_TRUE(line.Smooth());
    const auto declared = [](const QMetaObject& type) {
        return DeclaredDefault(type, type.property(type.indexOfProperty("Smooth")));
    };
    EXPECT_FALSE(declared(TZEPShape::staticMetaObject).isValid());
    EXPECT_EQ(declared(TZEPLineShape::staticMetaObject), QVariant(true));
}

TEST(Shape, PenStylesAreKnownByName) {
    TZEPLineShape shape;
    QStringList names;
    const int index = shape.metaObject()->indexOfProperty("Style");
    const QMetaProperty property = shape.metaObject()->property(index);
    ASSERT_TRUE(property.isEnumType());
    for (int i = 0; i < property.enumerator().keyCount(); ++i) {
        ASSERT_EQ(property.enumerator().value(i), i);
        ASSERT_TRUE(property.write(&shape, i));
        EXPECT_EQ(shape.Style(), static_cast<TPenStyle>(i));
        names << QString::fromLatin1(property.enumerator().key(i));
    }
    EXPECT_EQ(names.join(u' '),
              QStringLiteral("psSolid psDash psDot psDashDot psDashDotDot psClear psInsideFrame"));
}
