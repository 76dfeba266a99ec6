#include "tests/view/SelectFixture.h"
#include <zep/objects/Node.h>
#include <zep/scene/SelectHits.h>
#include <zep/sheets/Layout.h>
#include <zep/sheets/Viewport.h>
#include <zep/view/Actor.h>
#include <zep/view/Extent.h>

#include <QTemporaryDir>

#include <cmath>

namespace ZEP {
namespace {

TZEPLine* AddLine(TZEPObject* parent, TColor color, const TGLArrayd3& a, const TGLArrayd3& b) {
    auto* line = Add<TZEPLine>(parent);
    line->SetColor(color);
    line->SetWidth(3);
    line->P1()->SetData(a);
    line->P2()->SetData(b);
    return line;
}

/// A model far from the origin, a red and a green line that cross, and a sheet with three views of
/// it and a blue line of its own.
class Sheets : public SelectTest {
protected:
    Sheets() { Scene.SetSceneAmbientColor(clWhite); }

    void Make(TZEPObject* root, double place) {
        Far = place;
        Walls = AddLayer(root, "Walls");
        auto* pipes = AddLayer(root, "Pipes");
        AddLine(Walls, clRed, {Far - 99, Far, 5}, {Far + 99, Far, 5})->SetIdent(u"wall");
        AddLine(pipes, clLime, {Far, Far - 99, 0}, {Far, Far + 99, 0})->SetIdent(u"pipe");
        Layout = Add<TZEPLayout>(root);
        Layout->SetVisible(false);
        Layout->SetPaperLeft(-9);
        Layout->SetPaperBottom(-4);
        Layout->SetPaperWidth(18);
        Layout->SetPaperHeight(8);
        auto* part = Add<TZEPNode>(Layout);
        part->SetIdent(u"WALLS");
        AddLine(part, clBlue, {-8, -3, 0}, {8, -3, 0})->SetIdent(u"frame");
        AddViewport(-5);
        TZEPViewport* turned = AddViewport(0);
        turned->SetTwist(90);
        turned->SetLeftOut(QStringLiteral("none\npipes"));
        TZEPViewport* cut = AddViewport(5);
        for (const auto& [x, y] : {std::pair{-2, -2}, {2, -2}, {-2, 2}})
            cut->Outline()->Add()->SetPoint({1.0 * x, 1.0 * y, 0});
        Camera.SetSheet(Layout);
    }
    static TZEPActor* AddLayer(TZEPObject* root, const char* ident) {
        auto* layer = Add<TZEPActor>(root);
        layer->SetIdent(QLatin1StringView(ident));
        return layer;
    }
    /// 4 by 4 at half the scale.
    TZEPViewport* AddViewport(double x) const {
        auto* viewport = Add<TZEPViewport>(Layout);
        viewport->XForm()->Translate()->SetData(x, 0, 0);
        viewport->SetWidth(4);
        viewport->SetHeight(4);
        viewport->SetViewHeight(8);
        viewport->Target()->SetData(Far, Far, 0);
        return viewport;
    }
    /// Half a unit apart from the left to the right: "w" for the paper.
    std::string Row(double y) {
        glEnable(GL_LIGHTING);
        Scene.Render(&Camera, 200, 100, false);
        std::string row;
        for (int x = 5; x < 200; x += 5) {
            const QColor color = Context().ReadPixel(x, 50 - static_cast<int>(10 * y));
            const int bits =
                (color.red() > 99) + 2 * (color.green() > 99) + 4 * (color.blue() > 99);
            row += ".rg?b??w"[bits];
        }
        return row;
    }
    std::string PickedAt(double x, double y) {
        const TZEPObject* picked = PickAt(x, y, 9);
        return picked ? picked->Ident().toStdString() : "";
    }
    TZEPActor* Walls = nullptr;
    TZEPLayout* Layout = nullptr;
    double Far = 0;
};

/// What the root is, and how far from the origin the model stands.
template <class TRoot, int Place>
struct TModel {
    using Root = TRoot;
    static constexpr double Far = Place;
};

template <class T>
class SheetsOf : public Sheets {
protected:
    SheetsOf() { Make(Add<typename T::Root>(&Scene), T::Far); }
};
using TModels = testing::Types<TModel<TZEPBatch, 1'000'000>, TModel<TZEPNode, 1000>>;
TYPED_TEST_SUITE(SheetsOf, TModels);

TYPED_TEST(SheetsOf, ShowAndPickTheModelCutOffTurnedAndWithoutSomeLayers) {
    EXPECT_EQ(this->Row(0), ".wwwwrrrrgrrrwwwwwwrwwwwwrrrrwwwwwwww..");
    EXPECT_EQ(this->Row(1), ".wwwwwwwwgwwwwwwwwwrwwwwwwwwwwwwwwwww..");
    EXPECT_EQ(this->Row(-3), ".wwbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbww..");
    EXPECT_EQ(this->Row(4.5), ".......................................");
    EXPECT_EQ(this->PickedAt(-4, 0), "wall");
    EXPECT_EQ(this->PickedAt(-5, 1), "pipe");
    EXPECT_EQ(this->PickedAt(-5, 2.5), "") << "beyond the window";
    EXPECT_EQ(this->PickedAt(0, 1), "wall") << "turned";
    EXPECT_EQ(this->PickedAt(1, 0), "") << "of a layer that is left out";
    EXPECT_EQ(this->PickedAt(6, 0), "wall") << "an outline counts as its box";
    EXPECT_EQ(this->PickedAt(2, -3), "frame");
}

TYPED_TEST(SheetsOf, HideWhatALayerHasOnThemWithIt) {
    this->Walls->SetVisible(false);
    EXPECT_EQ(this->Row(0), ".wwwwwwwwgwwwwwwwwwwwwwwwwwwwwwwwwwww..");
    EXPECT_EQ(this->Row(-3), ".wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww..");
    EXPECT_EQ(this->PickedAt(-4, 0) + this->PickedAt(2, -3), "");
}

TYPED_TEST(SheetsOf, AreSeenInNoOtherWay) {
    this->Layout->SetVisible(true);
    this->Camera.SetSheet(nullptr);
    EXPECT_EQ(this->Row(0), std::string(39, '.'));
    EXPECT_EQ(VisibleExtent(this->Scene).Bounds()->Min[0], TypeParam::Far - 99);
    this->Camera.SetSheet(this->Layout);
    EXPECT_EQ(VisibleExtent(*this->Layout).Bounds()->Min[0], -9);
    delete this->Layout;
    EXPECT_EQ(this->Camera.Sheet(), nullptr);
    EXPECT_EQ(this->Row(0), std::string(39, '.'));
}

TYPED_TEST(SheetsOf, AreTheSameWhenTheyAreRead) {
    TZEPObject* root = this->Layout->Parent();
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("model.zept"));
    root->SaveToTextFile(file);
    root->LoadFromTextFile(file);
    this->Camera.SetSheet(root->GetItem(2));
    EXPECT_EQ(this->Row(0), ".wwwwrrrrgrrrwwwwwwrwwwwwrrrrwwwwwwww..");
    EXPECT_EQ(this->Row(1), ".wwwwwwwwgwwwwwwwwwrwwwwwwwwwwwwwwwww..");
}

TEST_F(Sheets, AreExactFarFromTheOrigin) {
    Make(Add<TZEPBatch>(&Scene), 1e8);
    EXPECT_EQ(Row(0), ".wwwwrrrrgrrrwwwwwwrwwwwwrrrrwwwwwwww..");
}

/// A rectangle that selects what lies inside knows where objects of the sheet are.
TYPED_TEST(SheetsOf, KeepTheModelOutOfWhatLiesInside) {
    const auto count = [this](TZEPReach reach) {
        return this->Scene.ObjectsIn(this->Camera, {200, 100, 100, 50, 198, 98}, reach).size();
    };
    EXPECT_EQ(count(TZEPReach::Touched), 3U);
    EXPECT_EQ(count(TZEPReach::Inside), 1U);
}

/// Neither sections nor a window that shows nothing disturb the rest.
TYPED_TEST(SheetsOf, StandSectionsAndEmptyWindows) {
    TZEPSections sections;
    sections[0] = {.Normal = unitx, .Distance = -100, .On = true};
    this->Camera.SetSections(sections);
    for (const double height : {0.0, -1.0, 1e300, std::nan("")})
        this->AddViewport(7)->SetViewHeight(height);
    this->AddViewport(7)->SetWidth(0);
    EXPECT_EQ(this->Row(0), ".wwwwrrrrgrrrwwwwwwrwwwwwrrrrwwwwwwww..");
    EXPECT_EQ(this->PickedAt(-4, 0), "wall");
}

} // namespace
} // namespace ZEP
