#include <zep/framework/Exception.h>
#include <zep/framework/Property.h>
#include <zep/scene/XForm.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <optional>

namespace ZEP {
namespace {

class Owner : public TObject {
public:
    void Changed(TObject* sender) {
        ++Calls;
        Sender = sender;
    }
    int Calls = 0;
    TObject* Sender = nullptr;
};

/// A transform as an object makes it.
struct Transform {
    Transform() { XForm.Scale()->SetData(1, 1, 1); }
    Owner Object;
    TZEPXForm XForm{Notify<&Owner::Changed>(&Object), nullptr};
};

using Edit = std::function<void(TZEPXForm&)>;

struct Row {
    const char* Name;
    Edit Do;
    TGLArrayd3 Point, Image;
};

void Spin(TZEPXForm& x) {
    x.Rotate()->SetZ(90);
}

const std::vector<Row> Rows{
    {"nothing", [](TZEPXForm&) {}, {1, 2, 3}, {1, 2, 3}},
    {"translation", [](TZEPXForm& x) { x.Translate()->SetData(1, 2, 3); }, {1, 1, 1}, {2, 3, 4}},
    {"x to y", Spin, {1, 0, 0}, {0, 1, 0}},
    {"y to z", [](TZEPXForm& x) { x.Rotate()->SetX(90); }, {0, 1, 0}, {0, 0, 1}},
    {"z to x", [](TZEPXForm& x) { x.Rotate()->SetY(90); }, {0, 0, 1}, {1, 0, 0}},
    {"z first, then y, then x",
     [](TZEPXForm& x) { x.Rotate()->SetData(90, 90, 90); },
     {1, 2, 3},
     {3, -2, 1}},
    {"scale before rotation",
     [](TZEPXForm& x) {
         Spin(x);
         x.Scale()->SetData(2, 3, 4);
     },
     {1, 1, 1},
     {-3, 2, 4}},
    {"rotation before translation",
     [](TZEPXForm& x) {
         Spin(x);
         x.Translate()->SetX(1);
     },
     {1, 0, 0},
     {1, 1, 0}},
    {"centre ignored",
     [](TZEPXForm& x) {
         Spin(x);
         x.Center()->SetData(5, 5, 5);
     },
     {1, 0, 0},
     {0, 1, 0}},
    {"about the centre",
     [](TZEPXForm& x) {
         Spin(x);
         x.Center()->SetData(1, 0, 0);
         x.SetRotateAroundCenter(true);
     },
     {0, 0, 0},
     {1, -1, 0}},
    {"translation turned about the centre",
     [](TZEPXForm& x) {
         Spin(x);
         x.Translate()->SetX(1);
         x.SetRotateAroundCenter(true);
     },
     {0, 0, 0},
     {0, 1, 0}},
    {"rotation about an axis elsewhere",
     [](TZEPXForm& x) { x.mRotate(1, 0, 0, 0, 0, 1, 180); },
     {0, 0, 0},
     {2, 0, 0}},
    {"free steps act last given first",
     [](TZEPXForm& x) {
         x.mTranslate(10, 0, 0);
         x.mScale(2, 2, 2);
     },
     {1, 1, 1},
     {12, 2, 2}},
    {"free steps act before the scale",
     [](TZEPXForm& x) {
         x.mTranslate(1, 0, 0);
         x.Scale()->SetX(3);
     },
     {1, 0, 0},
     {6, 0, 0}},
    {"base matrix acts last",
     [](TZEPXForm& x) {
         TGLMatrixd4 m = idd;
         Scaled(2, 2, 2, m);
         x.mId(m);
         x.Translate()->SetX(1);
     },
     {1, 0, 0},
     {4, 0, 0}},
    {"no scale at all", [](TZEPXForm& x) { x.Scale()->SetData(0, 0, 0); }, {1, 2, 3}, {0, 0, 0}},
};

TEST(XForm, PlacesPoints) {
    for (const Row& row : Rows) {
        Transform t;
        row.Do(t.XForm);
        TGLArrayd3 image;
        t.XForm.Convert(row.Point, image);
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(image[k], row.Image[k], 1e-12) << row.Name << " coordinate " << k;
        EXPECT_EQ(t.XForm.IsActive(), !IsIdentityd(t.XForm.GetMatrix())) << row.Name;
    }
}

TEST(XForm, EveryEditCountsRecomputesAndTells) {
    Transform t;
    TZEPXForm& x = t.XForm;
    const std::vector<std::pair<Edit, TObject*>> edits{
        {[](TZEPXForm& f) { f.Translate()->SetY(1); }, x.Translate()},
        {[](TZEPXForm& f) { f.Center()->SetY(1); }, x.Center()},
        {[](TZEPXForm& f) { f.Scale()->SetY(2); }, x.Scale()},
        {[](TZEPXForm& f) { f.Rotate()->SetY(1); }, x.Rotate()},
        {[](TZEPXForm& f) { f.SetRotateAroundCenter(true); }, &x},
        {[](TZEPXForm& f) { f.mId(idd); }, &x},
        {[](TZEPXForm& f) { f.mScale(1, 1, 1); }, &x},
        {[](TZEPXForm& f) { f.mTranslate(0, 0, 0); }, &x},
        {[](TZEPXForm& f) { f.mRotate(0, 0, 0, 0, 0, 1, 5); }, &x}};
    for (std::size_t i = 0; i < edits.size(); ++i) {
        const int calls = t.Object.Calls;
        const int counter = x.ChangeCounter();
        edits[i].first(x);
        EXPECT_EQ(t.Object.Calls, calls + 1) << i;
        EXPECT_EQ(x.ChangeCounter(), counter + 1) << i;
        EXPECT_EQ(t.Object.Sender, edits[i].second) << i;
    }
    const int calls = t.Object.Calls;
    x.SetRotateAroundCenter(true);
    x.Translate()->SetY(1);
    EXPECT_EQ(t.Object.Calls, calls);
}

TEST(XForm, StartsAsTheIdentityWithZeroScale) {
    const TZEPXForm x({}, nullptr);
    EXPECT_FALSE(x.IsActive());
    EXPECT_EQ(x.GetMatrix(), idd);
}

TEST(XForm, ClearTellsNobodyAndWaitsWithItsResult) {
    Transform t;
    t.XForm.Translate()->SetX(4);
    t.XForm.mScale(2, 2, 2);
    const int calls = t.Object.Calls;
    const int counter = t.XForm.ChangeCounter();
    t.XForm.Clear();
    EXPECT_EQ(t.Object.Calls, calls);
    EXPECT_EQ(t.XForm.ChangeCounter(), counter);
    EXPECT_EQ(t.XForm.GetMatrix(), idd);
    EXPECT_EQ(t.XForm.Scale()->Data(), zero3d);
    EXPECT_TRUE(t.XForm.IsActive()) << "as before, until the next edit";
    t.XForm.Scale()->SetData(1, 1, 1);
    EXPECT_FALSE(t.XForm.IsActive());
}

/// Keeps what a transform defines, and plays it into another.
class Filer : public TFiler {
public:
    void DefineBinaryProperty(const char* name, const std::function<void(const QByteArray&)>& read,
                              const std::function<QByteArray()>& write, bool hasData) override {
        Name = QByteArray(name);
        if (Play) read(*Play);
        if (hasData) Stored = write();
    }
    QByteArray Name;
    std::optional<QByteArray> Stored;
    const QByteArray* Play = nullptr;
};

TEST(XForm, StoresItsExtraMatrixWhereThereIsOne) {
    Transform t;
    Filer none;
    t.XForm.mTranslate(0, 0, 0);
    t.XForm.Translate()->SetX(5);
    t.XForm.DefineProperties(none);
    EXPECT_EQ(none.Name, "Matrix");
    EXPECT_FALSE(none.Stored);

    t.XForm.mTranslate(1, 2, 3);
    Filer stored;
    t.XForm.DefineProperties(stored);
    ASSERT_TRUE(stored.Stored);
    EXPECT_EQ(stored.Stored->size(), 128);
    // 1.0 and 2.0 in little-endian IEEE doubles
    EXPECT_EQ(stored.Stored->mid(0, 8), QByteArray::fromHex("000000000000F03F"));
    EXPECT_EQ(stored.Stored->mid(13 * 8, 8), QByteArray::fromHex("0000000000000040"));

    Transform other;
    other.XForm.Translate()->SetX(5);
    const int counter = other.XForm.ChangeCounter();
    const int calls = other.Object.Calls;
    Filer played;
    played.Play = &*stored.Stored;
    other.XForm.DefineProperties(played);
    EXPECT_EQ(other.XForm.GetMatrix(), t.XForm.GetMatrix());
    EXPECT_EQ(other.XForm.ChangeCounter(), counter);
    EXPECT_EQ(other.Object.Calls, calls + 1);
}

TEST(XForm, RefusesAMatrixThatIsCutOff) {
    Transform t;
    t.XForm.mTranslate(1, 0, 0);
    const QByteArray whole = t.XForm.StoreMatrix();
    Transform other;
    for (const int size : {0, 8, 127})
        EXPECT_THROW(other.XForm.LoadMatrix(whole.left(size)), Exception) << size;
    EXPECT_FALSE(other.XForm.IsActive());
    other.XForm.LoadMatrix(whole + "more");
    EXPECT_TRUE(other.XForm.IsActive());
}

TEST(XForm, AssignCopiesAllWithOneNotification) {
    Transform source;
    for (const Row& row : Rows) row.Do(source.XForm);
    Transform target;
    const int calls = target.Object.Calls;
    target.XForm.Assign(&source.XForm);
    EXPECT_EQ(target.XForm.GetMatrix(), source.XForm.GetMatrix());
    EXPECT_EQ(target.Object.Calls, calls + 1);
    EXPECT_EQ(target.XForm.Rotate()->Data(), source.XForm.Rotate()->Data());
    EXPECT_THROW(target.XForm.Assign(target.XForm.Scale()), Exception);
}

TEST(XForm, PublishesItsVectorsAsSubObjects) {
    Transform t;
    QStringList names;
    for (const QMetaProperty& property : PublishedProperties(*t.XForm.MetaObject())) {
        names.append(QString::fromLatin1(property.name()));
        const bool isFlag = names.back() == QLatin1String("RotateAroundCenter");
        EXPECT_EQ(SubObject(property, &t.XForm) == nullptr, isFlag) << property.name();
    }
    EXPECT_EQ(names.join(u' '), QStringLiteral("Translate Center RotateAroundCenter Scale Rotate"));
}

} // namespace
} // namespace ZEP
