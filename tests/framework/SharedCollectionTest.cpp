#include <zep/framework/Exception.h>
#include <zep/framework/Property.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/VertexItems.h>

#include <gtest/gtest.h>

#include <memory>

namespace ZEP {
namespace {

static_assert(sizeof(TZEPVertex3) <= 48);
static_assert(sizeof(TZEPVertex3CI) <= 16 + 32);
static_assert(sizeof(TZEPVertex3TexCI) <= 16 + 56);
static_assert(sizeof(TZEPFace3CI) <= 16 + 16);

/// Counts what it is told.
class User : public TZEPCollectionUser {
public:
    [[nodiscard]] bool WantsInvalidation() const override { return Wants; }
    void Invalidate(TObject* sender) override {
        ++Calls;
        Sender = sender;
    }

    bool Wants = true;
    int Calls = 0;
    TObject* Sender = nullptr;
};

TEST(Vertex3, SettersNotifyOnChangeAndBulkSettersAlways) {
    User user;
    TZEPVertex3Tex v(Notify<&User::Invalidate>(&user));
    struct Step {
        const char* Name;
        std::function<void()> Do;
        int Calls;
    };
    for (const Step& step : {Step{"X", [&] { v.SetX(1); }, 1},
                             {"X again", [&] { v.SetX(1); }, 0},
                             {"Z by number", [&] { v.SetValue(2, 3); }, 1},
                             {"TexX", [&] { v.SetTexX(0.5); }, 1},
                             {"TexY by number", [&] { v.SetValue(4, 0.25); }, 1},
                             {"TexY again", [&] { v.SetTexY(0.25); }, 0},
                             {"no such number", [&] { v.SetValue(5, 9), v.SetValue(-1, 9); }, 0},
                             {"equal data", [&] { v.SetData(1, 0, 3); }, 1},
                             {"equal texture", [&] { v.SetTexCoord(0.5, 0.25); }, 1}}) {
        user.Calls = 0;
        step.Do();
        EXPECT_EQ(user.Calls, step.Calls) << step.Name;
    }
    EXPECT_EQ(user.Sender, &v);
    EXPECT_EQ(v.Data(), (TGLArrayd3{1, 0, 3}));
    EXPECT_EQ(v.TexX(), 0.5);
    EXPECT_EQ(v.TexY(), 0.25);
}

TEST(Vertex3, PlainVerticesHaveNoTextureCoordinates) {
    User user;
    TZEPVertex3 v(Notify<&User::Invalidate>(&user));
    v.SetValue(3, 1);
    EXPECT_EQ(user.Calls, 0);
    EXPECT_EQ(v.Data(), zero3d);
}

TEST(Vertex3, AssignCopiesWithOneNotification) {
    User user;
    TZEPVertex3Tex source;
    source.SetData(1, 2, 3);
    source.SetTexCoord(4, 5);
    TZEPVertex3Tex target(Notify<&User::Invalidate>(&user));
    target.Assign(&source);
    EXPECT_EQ(user.Calls, 1);
    EXPECT_EQ(target.Data(), source.Data());
    EXPECT_EQ(target.TexY(), 5);

    TZEPVertex3 plain;
    plain.SetData(7, 8, 9);
    target.Assign(&plain);
    EXPECT_EQ(target.Data(), plain.Data());
    EXPECT_EQ(target.TexY(), 5);
    EXPECT_THROW(target.Assign(nullptr), Exception);
}

TEST(Collection, EveryChangeInvalidatesEachUserOnce) {
    TObject* const nobody = nullptr;
    TZEPFaces faces(nobody);
    TZEPTexVertexes vertexes(nobody);
    User user;
    for (TZEPCollection* collection :
         {static_cast<TZEPCollection*>(&faces), static_cast<TZEPCollection*>(&vertexes)}) {
        collection->RegisterObject(&user);
        collection->RegisterObject(&user);
        collection->RegisterObject(nullptr);
    }
    TZEPFace3CI* face = faces.Add();
    TZEPVertex3TexCI* vertex = vertexes.Add();
    EXPECT_EQ(user.Calls, 2);
    struct Step {
        const char* Name;
        std::function<void()> Do;
        int Calls;
    };
    for (const Step& step : {Step{"C by number", [&] { face->SetData(2, 4); }, 1},
                             {"C again", [&] { face->SetData(2, 4); }, 0},
                             {"no such corner", [&] { face->SetData(3, 4); }, 0},
                             {"TexY by number", [&] { vertex->SetData(4, 1); }, 1},
                             {"no such number", [&] { vertex->SetData(5, 1); }, 0},
                             {"point", [&] { vertex->SetPoint(unitx); }, 1},
                             {"delete", [&] { faces.Delete(0); }, 1},
                             {"clear", [&] { vertexes.Clear(); }, 1},
                             {"clear the empty", [&] { vertexes.Clear(); }, 0}}) {
        user.Calls = 0;
        step.Do();
        EXPECT_EQ(user.Calls, step.Calls) << step.Name;
    }
    EXPECT_EQ(user.Sender, &vertexes) << "the collection is the sender, not the item";
}

TEST(Collection, SharedOnesReachThoseWhoWantIt) {
    TZEPVertexes vertexes(nullptr);
    User first;
    User byHand;
    User gone;
    for (User* user : {&first, &byHand, &gone}) vertexes.RegisterObject(user);
    byHand.Wants = false;
    vertexes.UnregisterObject(&gone);
    vertexes.UnregisterObject(&gone);
    vertexes.UnregisterObject(nullptr);
    vertexes.Add()->SetX(1);
    EXPECT_EQ(first.Calls, 2);
    EXPECT_EQ(byHand.Calls, 0);
    EXPECT_EQ(gone.Calls, 0);
}

TEST(Collection, UpdateBracketsGatherChanges) {
    TZEPVertexes vertexes(nullptr);
    User user;
    vertexes.RegisterObject(&user);
    vertexes.BeginUpdate();
    vertexes.BeginUpdate();
    for (int i = 0; i < 100; ++i) vertexes.Add()->SetPoint({1, 2, 3});
    vertexes.EndUpdate();
    EXPECT_EQ(user.Calls, 0);
    vertexes.EndUpdate();
    EXPECT_EQ(user.Calls, 1);
    vertexes.BeginUpdate();
    vertexes.EndUpdate();
    vertexes.EndUpdate(); // one too many
    EXPECT_EQ(user.Calls, 1);
    vertexes.Add();
    EXPECT_EQ(user.Calls, 2);
    vertexes.BeginUpdate();
    vertexes.Add();
    EXPECT_EQ(user.Calls, 2) << "the one too many does not count";
    vertexes.EndUpdate();
    EXPECT_EQ(user.Calls, 3);
}

TEST(Collection, IndexAndAddressHoldAcrossAllChunks) {
    TZEPVertexes vertexes(nullptr);
    std::vector<TZEPVertex3CI*> added;
    for (int i = 0; i < 5000; ++i) {
        added.push_back(vertexes.Add());
        added.back()->SetX(i);
    }
    for (int i = 0; i < 5000; ++i) {
        ASSERT_EQ(vertexes.Item(i), added[static_cast<std::size_t>(i)]);
        ASSERT_EQ(vertexes[i].X(), i);
    }
    for (const int index : {-1, 5000, 1 << 30}) {
        EXPECT_THROW(static_cast<void>(vertexes.Item(index)), Exception) << index;
        EXPECT_THROW(vertexes.Delete(index), Exception) << index;
    }
}

TEST(Collection, ManyItemsComeInOneGoWithOneNotification) {
    TZEPFaces faces(nullptr);
    User user;
    faces.RegisterObject(&user);
    int sum = 0;
    // Into chunks that are full, begun and empty.
    for (const int count : {4, 0, 1, 9, 3000}) {
        user.Calls = 0;
        const int before = faces.Count();
        faces.AddEach(static_cast<std::size_t>(count), [&](TZEPFace3CI& face, std::size_t i) {
            face.SetCornersQuietly(before, static_cast<int>(i), 7);
            face.SetMaterialIndex(5); // watched by nobody yet
        });
        sum += count;
        EXPECT_EQ(user.Calls, count > 0 ? 1 : 0) << count;
        ASSERT_EQ(faces.Count(), sum);
        for (int i = before; i < sum; ++i) {
            ASSERT_EQ(faces[i].A(), before);
            ASSERT_EQ(faces[i].B(), i - before);
            ASSERT_EQ(faces[i].Collection(), &faces);
        }
    }
    faces[sum - 1].SetMaterialIndex(6);
    EXPECT_EQ(user.Calls, 2);
}

TEST(Collection, DeleteClosesTheGapAndLeavesNothingBehind) {
    TZEPFaces faces(nullptr);
    for (int i = 0; i < 20; ++i) faces.Add()->SetA(i);
    faces.Delete(3);
    faces.Delete(18);
    ASSERT_EQ(faces.Count(), 18);
    for (int i = 0; i < 18; ++i) EXPECT_EQ(faces[i].A(), i < 3 ? i : i + 1);
    const TZEPFace3CI* fresh = faces.Add();
    EXPECT_EQ(fresh->A(), 0);
    EXPECT_EQ(fresh->MaterialIndex(), -1);
    EXPECT_EQ(fresh->Collection(), &faces);
    EXPECT_EQ(fresh->Index(), 18);
}

TEST(Collection, AssignCopiesItemsThatAnswerToTheirNewCollection) {
    TZEPVertexes target(nullptr);
    User user;
    {
        TZEPVertexes source(nullptr);
        for (int i = 0; i < 10; ++i) source.Add()->SetPoint({1.0 * i, 2, 3});
        source[4].SetColor(clRed);
        target.Add();
        target.RegisterObject(&user);
        target.Assign(&source);
        target.Assign(&target);
    }
    EXPECT_EQ(user.Calls, 1);
    ASSERT_EQ(target.Count(), 10);
    EXPECT_EQ(target[9].Data(), (TGLArrayd3{9, 2, 3}));
    EXPECT_EQ(target[4].Color(), clRed);
    target[9].SetX(0);
    EXPECT_EQ(user.Calls, 2);
    TZEPFaces faces(nullptr);
    EXPECT_THROW(target.Assign(&faces), Exception);
}

TEST(Collection, ItemsShowTheirValues) {
    TZEPVertexes vertexes(nullptr);
    TZEPFaces faces(nullptr);
    TZEPVertex3CI* vertex = vertexes.Add();
    EXPECT_EQ(vertex->RGBA(), (TGLColor{1, 1, 1, 1}));
    vertex->SetPoint({1, 2, 3});
    vertex->SetColor(clRed);
    EXPECT_EQ(vertex->RGBA(), (TGLColor{1, 0, 0, 1}));
    EXPECT_EQ(vertex->GetDisplayName(), QStringLiteral("(1.000000, 2.000000, 3.000000)"));
    TZEPFace3CI* face = faces.Add();
    face->SetB(-7);
    EXPECT_EQ(face->GetDisplayName(), QStringLiteral("(0, -7, 0)"));
}

} // namespace
} // namespace ZEP
