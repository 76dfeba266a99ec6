#include "tests/Cases.h"
#include "tests/Words.h"
#include "tests/framework/stream/Fields.h"
#include <zep/framework/Exception.h>
#include <zep/scene/XForm.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

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

/// Edits the transform, or, for `place`, answers where it places a point.
std::string Edited(TZEPXForm& x, const std::string& line) {
    const TWords words(line);
    const TGLArrayd3 v{words.Number(1), words.Number(2), words.Number(3)};
    const std::string verb = words.Verb();
    if (verb == "translate") x.Translate()->SetData(v);
    if (verb == "rotate") x.Rotate()->SetData(v);
    if (verb == "scale") x.Scale()->SetData(v);
    if (verb == "center") x.Center()->SetData(v);
    if (verb == "around-center") x.SetRotateAroundCenter(true);
    if (verb == "mTranslate") x.mTranslate(v[0], v[1], v[2]);
    if (verb == "mScale") x.mScale(v[0], v[1], v[2]);
    if (verb == "mRotate")
        x.mRotate(v[0], v[1], v[2], words.Number(4), words.Number(5), words.Number(6),
                  words.Number(7));
    if (verb == "base-scale") {
        TGLMatrixd4 base = idd;
        Scaled(v[0], v[1], v[2], base);
        x.mId(base);
    }
    EXPECT_EQ(x.IsActive(), !IsIdentityd(x.GetMatrix())) << line;
    if (verb != "place") return {};
    TGLArrayd3 image;
    x.Convert(v, image);
    QByteArray text;
    for (const double number : image)
        text += ' ' + QByteArray::number(std::abs(number) < 1e-12 ? 0.0 : number, 'g', 12);
    return text.trimmed().toStdString();
}

TEST(XForm, PlacesPoints) {
    ExpectCases("transforms.txt", [](const TCase& c) {
        Transform t;
        return EachLine(c, [&](const std::string& line) { return Edited(t.XForm, line); });
    });
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

TEST(XForm, StoresItsExtraMatrixWhereThereIsOne) {
    Transform t;
    QByteArray stored;
    TDefinedProperties kept([&](const std::string& name, const auto&, const QByteArray& data) {
        EXPECT_EQ(name, "Matrix");
        stored = data;
    });
    t.XForm.mTranslate(0, 0, 0);
    t.XForm.Translate()->SetX(5);
    t.XForm.DefineProperties(kept);
    EXPECT_TRUE(stored.isEmpty());

    t.XForm.mTranslate(1, 2, 3);
    t.XForm.DefineProperties(kept);
    EXPECT_EQ(stored.size(), 128);
    // 1.0 and 2.0 in little-endian IEEE doubles
    EXPECT_EQ(stored.mid(0, 8), QByteArray::fromHex("000000000000F03F"));
    EXPECT_EQ(stored.mid(13 * 8, 8), QByteArray::fromHex("0000000000000040"));

    Transform other;
    other.XForm.Translate()->SetX(5);
    const int counter = other.XForm.ChangeCounter();
    const int calls = other.Object.Calls;
    TDefinedProperties played(
        [&](const std::string&, const auto& read, const QByteArray&) { read(stored); });
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
    for (const char* edit : {"translate 1 2 3", "rotate 90 90 90", "scale 2 3 4", "center 5 5 5",
                             "around-center", "mTranslate 10 0 0", "base-scale 2 2 2"})
        Edited(source.XForm, edit);
    Transform target;
    const int calls = target.Object.Calls;
    target.XForm.Assign(&source.XForm);
    EXPECT_EQ(target.XForm.GetMatrix(), source.XForm.GetMatrix());
    EXPECT_EQ(target.Object.Calls, calls + 1);
    EXPECT_EQ(target.XForm.Rotate()->Data(), source.XForm.Rotate()->Data());
    EXPECT_THROW(target.XForm.Assign(target.XForm.Scale()), Exception);
}

} // namespace
} // namespace ZEP
