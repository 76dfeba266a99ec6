#include "viewer/content/Describe.h"

#include <zep/converters/rs274d/Converter.h>
#include <zep/objects/Box.h>
#include <zep/objects/Circle.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/Label.h>
#include <zep/objects/Node.h>
#include <zep/scene/Add.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/view/Actor.h>
#include <zep/view/Facts.h>

#include <gtest/gtest.h>

#include <QLocale>

#include <numbers>

namespace ZEP {
namespace {

TEST(Describe, TellsOfEachMoveWhereItComesFromAndHowLongItIs) {
    QLocale::setDefault(QLocale::c());
    struct TRow {
        const char* Program;
        int Item, Line;
        std::optional<double> Length;
        QString Text;
    };
    const TRow rows[] = {
        {"G1 X3 Y4\n", 0, 1, 5,
         QStringLiteral(
             "Line, program line 1, length 5.000 mm, (0.000; 0.000; 0.000) to (3.000; 4.000; "
             "0.000)")},
        {"G0 X10\n(half a circle)\nG3 X-10 Y0 I-10 J0\n", 1, 3, 10 * std::numbers::pi,
         QStringLiteral("Arc, program line 3, radius 10.000 mm, diameter 20.000 mm, length 31.416 "
                        "mm, (10.000; 0.000; 0.000) to "
                        "(-10.000; 0.000; 0.000) about (0.000; 0.000; 0.000)")},
        {"G1 X1\nG81 X2 Y2 Z-1 R1\n", -1, 2, {}, {}},
    };
    for (const TRow& row : rows) {
        SCOPED_TRACE(row.Program);
        TZEPObject root;
        TRS274DConverter converter;
        converter.SetRoot(&root);
        converter.SetExtended(true);
        converter.ReadNC(row.Program);
        ASSERT_GT(root.GetItemsCount(), row.Item);
        TZEPObject& object = *root.GetItem(row.Item < 0 ? root.GetItemsCount() - 1 : row.Item);
        EXPECT_EQ(ProgramLineOf(object), row.Line);
        if (!row.Length) continue;
        EXPECT_NEAR(FactsOf(object).Length.value_or(0), *row.Length, 1e-6);
        EXPECT_EQ(Describe(object, QStringLiteral("mm")), row.Text);
    }
}

TEST(Describe, TellsWhatStandsOnWhichLayerAndHowLargeItIs) {
    QLocale::setDefault(QLocale::c());
    TZEPActor layer;
    layer.SetIdent(QStringLiteral("Walls"));
    auto* circle = Add<TZEPCircle>(&layer);
    circle->XForm()->Scale()->SetData(5, 5, 5);
    auto* ellipse = Add<TZEPCircle>(&layer);
    ellipse->XForm()->Scale()->SetData(4, 2, 1);
    auto* box = Add<TZEPBox>(&layer);
    box->SetIdent(QStringLiteral("Crate"));
    auto* handle = Add<TZEPNode>(Add<TZEPNode>(&layer));
    handle->Parent()->SetIdent(QStringLiteral("Door"));
    handle->SetIdent(QStringLiteral("Handle"));
    auto* outline = Add<TZEPDashedPolyline>(handle);
    for (const TGLArrayd3& point : {TGLArrayd3{0, 0, 1}, {4, 0, 1}, {4, 3, 1}})
        outline->Vertexes()->Add()->SetPoint(point);
    outline->SetClosed(true);
    outline->SetDashes(QStringLiteral("2 -1"));
    auto* tag = Add<TZEPLabel>(&layer);
    tag->SetIdent(QStringLiteral("NO"));
    tag->SetCaption(QStringLiteral("12"));
    const std::pair<TZEPObject*, const char*> rows[] = {
        {outline, "Dashed line, layer Walls, block Door/Handle, line type 2 -1, length 12.000 "
                  "units, area 6.000 square units, about (2.000; 1.500; 1.000)"},
        {tag, "Text \"NO\", layer Walls, text 12, size 0.000 x 0.000 x 0.000 units, about (0.000; "
              "0.000; 0.000)"},
        {circle,
         "Circle, layer Walls, radius 2.500 units, diameter 5.000 units, length 15.708 units, area "
         "19.635 square units, about (0.000; 0.000; 0.000)"},
        {ellipse,
         "Circle, layer Walls, size 4.000 x 2.000 x 0.000 units, about (0.000; 0.000; 0.000)"},
        {box, "Box \"Crate\", layer Walls, size 1.000 x 1.000 x 1.000 units, about (0.000; 0.000; "
              "0.000)"}};
    for (const auto& [object, text] : rows)
        EXPECT_EQ(Describe(*object, QStringLiteral("units")), QLatin1String(text));
}

TEST(Describe, OnlyAProgramsIdentGivesALine) {
    for (const char* ident : {"", "Line", "Line ", "Line x", "Line -3", "Line 0", "line 3",
                              "Line 99999999999", "Line 3a"}) {
        TZEPObject object;
        object.SetIdent(QString::fromLatin1(ident));
        EXPECT_FALSE(ProgramLineOf(object)) << ident;
    }
}

} // namespace
} // namespace ZEP
