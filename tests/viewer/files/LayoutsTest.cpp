#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include "tests/converters/dxf/DXFPairs.h"
#include "viewer/files/Document.h"
#include "viewer/files/FileLayouts.h"
#include <zep/batch/Batch.h>
#include <zep/sheets/Layout.h>
#include <zep/view/Dimension.h>

namespace ZEP {
namespace {

class Layouts : public FolderTest {
protected:
    /// A line of 1000 units, and two sheets of which one has paper and a line on it.
    Layouts() {
        Drawing = Put("plan.dxf", QByteArray::fromStdString(Pairs(
                                      "0 SECTION|2 OBJECTS|"
                                      "0 LAYOUT|72 1|44 297|45 210|100 AcDbLayout|1 A4 sheet|71 1|"
                                      "0 LAYOUT|100 AcDbLayout|1 A4 sheet|71 2|0 ENDSEC|"
                                      "0 SECTION|2 ENTITIES|0 LINE|8 a|11 1000|"
                                      "0 LINE|8 a|67 1|11 20|0 ENDSEC|0 EOF")));
    }
    /// From the left to the right.
    static double Width(const TDocument& document) {
        const auto bounds = document.Bounds();
        return bounds ? bounds->Max[0] - bounds->Min[0] : 0;
    }
    static std::string Names(const TDocument& document) {
        std::string names;
        for (const TFileLayout& layout : LayoutsOf(document.Files()))
            names += layout.Name.toStdString() + ";";
        return names;
    }
    static void Show(TDocument& document, const char* name) {
        document.ShowLayout(LayoutNamed(QLatin1StringView(name), document.Files()), 1);
    }

    QString Drawing;
};

TEST_F(Layouts, AreShownInPlaceOfTheModelAndEachAsItWasLeft) {
    TDocument document;
    ASSERT_TRUE(document.Open({Drawing}, false));
    document.LookFrom(TDirection::Front, 1);
    EXPECT_EQ(Width(document), 1000);
    const TGLArrayd3 eye = document.Camera()->GetPosition();
    const auto behind = document.Files()[0].Root->Shown().Background;
    Show(document, "a4 SHEET");
    EXPECT_EQ(document.Camera()->Sheet(), document.Layout());
    EXPECT_EQ(Width(document), 297);
    EXPECT_TRUE(document.Camera()->Orthographic()) << "it is flat";
    EXPECT_NE(document.Camera()->GetPosition(), eye);
    EXPECT_EQ(document.Files()[0].Root->Shown().Background, std::optional(clWhite));
    EXPECT_FALSE(document.Backdrop().Guides());
    document.SetBackground(clBlack);
    EXPECT_EQ(document.Files()[0].Root->Shown().Background, std::optional(clWhite))
        << "paper is white whatever is around";
    document.SetBackground({});
    document.FitObjects({document.Files()[0].Root->GetItem(0)}, 1); // which is not on it
    Show(document, "model");
    EXPECT_EQ(document.Layout(), nullptr);
    EXPECT_EQ(document.Camera()->GetPosition(), eye);
    EXPECT_EQ(document.Files()[0].Root->Shown().Background, behind);
    EXPECT_TRUE(document.Backdrop().Guides());
}

TEST_F(Layouts, StayWhereTheirFileIsReadAgainWithWhatWasMeasured) {
    TDocument document;
    ASSERT_TRUE(document.Open({Drawing}, false));
    EXPECT_EQ(Names(document), "A4 sheet;A4 sheet (2);");
    Show(document, "A4 sheet");
    (new TZEPDimension)->SetParentComponent(document.Layout());
    const int children = document.Layout()->GetItemsCount();
    ASSERT_TRUE(document.Add({Drawing}, false));
    ASSERT_NE(document.Layout(), nullptr);
    EXPECT_EQ(document.Layout()->GetItemsCount(), children);
    EXPECT_EQ(Width(document), 297);
    document.Save(Path("plan.zep"));
    ASSERT_TRUE(document.Open({Path("plan.zep")}, false));
    EXPECT_EQ(document.Layout(), nullptr);
    EXPECT_EQ(Width(document), 1000);
    EXPECT_EQ(Names(document), "A4 sheet;A4 sheet (2);");
    Show(document, "A4 sheet");
    EXPECT_EQ(Width(document), 297);
    document.Close(Path("plan.zep"));
    EXPECT_EQ(document.Layout(), nullptr);
    EXPECT_EQ(Width(document), 0);
}

TEST_F(Layouts, UnknownNamesAreAnsweredWithThoseThatThereAre) {
    TDocument document;
    ASSERT_TRUE(document.Open({Drawing}, false));
    EXPECT_EQ(ErrorOf([&] { Show(document, "A3"); }),
              Drawing.toStdString() +
                  " has no layout \"A3\": it has Model, A4 sheet, A4 sheet (2).");
    ASSERT_TRUE(document.Open({Drawing}, true));
    EXPECT_EQ(Names(document), "") << "plain";
}

} // namespace
} // namespace ZEP
