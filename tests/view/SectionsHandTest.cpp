#include "tests/view/PanelFixture.h"
#include <zep/ZEPObjects.h>

#include <QMouseEvent>

#include <cmath>
#include <limits>
#include <numbers>

namespace ZEP {
namespace {

/// Of a cube whose corners 0 to 3 go round below, 4 to 7 above.
constexpr int CubeFaces[][3] = {{0, 2, 1}, {0, 3, 2}, {0, 1, 5}, {0, 5, 4}, {1, 2, 6}, {1, 6, 5},
                                {2, 3, 7}, {2, 7, 6}, {3, 0, 4}, {3, 4, 7}, {4, 5, 6}, {4, 6, 7}};

/// Looked at along x, 8 units to each side: a green body about the origin, 4 units wide, with a
/// blue box in its rear half, and a grey one before it. All light is ambient.
class SectionView : public Panel {
protected:
    void SetUp() override {
        Panel::SetUp();
        if (!Scene) return;
        Scene->SetSceneAmbientColor(clWhite);
        Camera->SetOrthographic(true);
        Camera->Position()->SetData(20, 0, 0);
        Camera->SetFOVY(2 * std::atan(0.4) * 180 / std::numbers::pi);
        Rear = AddBox({-1, 0, 0}, {1, 1, 1}, clBlue);
        Front = AddBox({6, 3, 0}, {1, 1, 1}, clSilver);
        Show();
    }
    TZEPBox* AddBox(const TGLArrayd3& at, const TGLArrayd3& size, TColor color) {
        auto* box = Add<TZEPBox>(Scene.get());
        box->XForm()->Translate()->SetData(at);
        box->XForm()->Scale()->SetData(size);
        box->SetColor(color);
        return box;
    }
    /// A cube of triangles that share no vertex. \param faces  of the twelve
    TZEPMesh* AddMesh(int faces) {
        auto* mesh = Add<TZEPMesh>(Scene.get());
        for (int face = 0; face < faces; ++face) {
            for (const int corner : CubeFaces[face])
                mesh->Vertexes()->Add()->SetPoint({corner % 4 == 1 || corner % 4 == 2 ? 2.0 : -2.0,
                                                   corner % 4 >= 2 ? 2.0 : -2.0,
                                                   corner >= 4 ? 2.0 : -2.0});
            mesh->Faces()->Add()->SetCornersQuietly(3 * face, 3 * face + 1, 3 * face + 2);
        }
        mesh->SetColor(clLime);
        return mesh;
    }
    void Cut(std::size_t number, const TGLArrayd3& normal, double distance) {
        TZEPSections sections = Camera->Sections();
        sections[number] = {normal, distance, true};
        Camera->SetSections(sections);
    }
    [[nodiscard]] unsigned At(double y, double z) const {
        const TGLArrayd3 place = *View->GetScreenCoords({0, y, z});
        return View->GrabFrame().pixel(static_cast<int>(place[0]), static_cast<int>(place[1])) &
               0xFFFFFFU;
    }
    [[nodiscard]] TZEPObject* Picked(double y, double z) const {
        const TGLArrayd3 place = *View->GetScreenCoords({0, y, z});
        View->MakeCurrent();
        TZEPObject* object =
            Scene->Pick(Camera, View->Width(), View->Height(), static_cast<int>(place[0]),
                        View->Height() - static_cast<int>(place[1]), 4, 4, 0);
        View->DoneCurrent();
        return object;
    }

    TZEPBox* Rear = nullptr;
    TZEPBox* Front = nullptr;
};

TEST_F(SectionView, ClosedBodiesAreCappedAndHitThereWhatIsOpenIsNot) {
    struct TCase {
        const char* Name;
        std::function<TZEPObject*()> Make;
        bool Capped;
    };
    const auto box = [this](TZEPBoxParts parts) {
        TZEPBox* made = AddBox(zero3d, {4, 4, 4}, clLime);
        made->SetParts(parts);
        return made;
    };
    const TCase cases[] = {
        {"box", [&] { return box(TZEPBox::AllParts); }, true},
        {"box without a face",
         [&] { return box(TZEPBoxParts(bpLeft) | bpRight | bpTop | bpBottom | bpBack); }, false},
        {"mirrored box",
         [&] {
             TZEPBox* made = box(TZEPBox::AllParts);
             made->XForm()->Scale()->SetX(-4);
             return made;
         },
         true},
        {"mesh", [&] { return AddMesh(12); }, true},
        {"mesh without a face", [&] { return AddMesh(11); }, false}};
    for (const TCase& each : cases) {
        SCOPED_TRACE(each.Name);
        const std::unique_ptr<TZEPObject> object(each.Make());
        Cut(0, unitx, 0);
        EXPECT_EQ(At(0, 0), each.Capped ? Green : Blue);
        EXPECT_EQ(Picked(1.7, 1.7), object.get());
        EXPECT_TRUE(each.Capped || Picked(0, 0) == Rear);
        EXPECT_EQ(At(1.7, 1.7), Green) << "the cap, or the inside";
        EXPECT_EQ(At(2.3, 0), Red) << "beside the body";
        EXPECT_EQ(At(3, 0), Red) << "cut away";
        EXPECT_EQ(Picked(3, 0), nullptr);
    }
}

TEST_F(SectionView, PlanesCutTogetherAndNoneThatIsNone) {
    AddBox(zero3d, {4, 4, 4}, clLime);
    Cut(0, unitx, 0);
    Cut(1, unity, 1);
    EXPECT_EQ(At(0.5, 0), Green);
    EXPECT_EQ(At(1.5, 0), Red) << "the cap of one is cut by the other";
    Cut(1, {0, -3, 0}, -1);
    EXPECT_EQ(At(0.5, 0), Red) << "flipped, and of any length";
    EXPECT_EQ(At(1.5, 0), Green);
    Cut(1, {0, std::numeric_limits<double>::quiet_NaN(), 0}, 0);
    Cut(2, zero3d, 0);
    EXPECT_EQ(At(0.5, 0), Green);
    EXPECT_EQ(Camera->Sections()[0].Flipped().Flipped(), Camera->Sections()[0]);
}

TEST_F(SectionView, MirrorsShowWhatIsCutAndCarvedSolidsStayWhole) {
    auto* both = Add<TZEPLogicalObject>(Scene.get());
    both->SetOperation(loAND);
    for (const double at : {0.0, 1.0})
        AddBox({at, 0, 0}, {3, 3, 3}, clLime)->SetParentComponent(both);
    Cut(0, unitx, -3); // before both of them, and all else
    EXPECT_EQ(At(0, 0), Green);
    EXPECT_EQ(At(3, 0), Red);
    both->SetVisible(false);
    Scene->SetReflections(true);
    Scene->SetFirstPasses(true);
    AddBox({-12, 4, 0}, {2, 2, 2}, clLime);
    auto* mirror = Add<TZEPPolygon>(Scene.get());
    for (const auto& [y, z] : {std::pair{-8.0, 4.0}, {8.0, 4.0}, {8.0, -4.0}, {-8.0, -4.0}})
        mirror->Vertexes()->Add()->SetPoint({-14 - y, y, z}); // turns a look along x to one along y
    mirror->SetColor(clBlack);
    mirror->SetReflection(1);
    Camera->SetFarClipPlane(200);
    Camera->SetSections({});
    EXPECT_EQ(At(-2, 0), Green) << "in the mirror";
    Cut(0, unity, 2);
    EXPECT_EQ(At(-2, 0), Red) << "what is cut away is so in the mirror";
}

TEST_F(SectionView, HandlesAreDraggedAlongTheNormalWithinTheContent) {
    auto* handles = new TZEPSectionHandles(View);
    AddBox(zero3d, {4, 4, 4}, clLime);
    Cut(0, unitz, 0);
    EXPECT_FALSE(handles->PlaceOf(0)) << "without content";
    handles->SetContent(TZEPBounds{{-2, -2, -2}, {2, 2, 2}});
    int told = 0;
    QObject::connect(handles, &TZEPSectionHandles::Moved, [&](std::size_t) { ++told; });
    const double unit = (*View->GetScreenCoords({0, 0, 0}))[1] - (*View->GetScreenCoords(unitz))[1];
    const auto send = [this](QEvent::Type type, QPoint at, Qt::MouseButtons held) {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, View->mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(View, &event);
    };
    const auto drag = [&](QPoint from, QPoint to, bool release) {
        send(QEvent::MouseButtonPress, from, Qt::LeftButton);
        send(QEvent::MouseMove, to, Qt::LeftButton);
        if (release) send(QEvent::MouseButtonRelease, to, Qt::NoButton);
    };
    const auto at = [&] { return Camera->Sections()[0].Distance; };
    const QPoint first = *handles->PlaceOf(0);
    drag(first, first - QPoint(5, qRound(unit)), true);
    EXPECT_NEAR(at(), 1, 0.1);
    EXPECT_EQ(told, 1);
    drag(*handles->PlaceOf(0), first - QPoint(0, 100), true);
    EXPECT_EQ(at(), 2) << "within the content";
    EXPECT_FALSE(handles->At(first));
    drag(*handles->PlaceOf(0), first, false);
    EXPECT_NEAR(at(), 0, 0.1);
    QTest::keyClick(View, Qt::Key_Escape);
    EXPECT_EQ(at(), 2) << "taken back";
    delete Camera;
    send(QEvent::MouseButtonRelease, first, Qt::NoButton);
    Settle();
}

} // namespace
} // namespace ZEP
