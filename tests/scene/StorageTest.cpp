#include "tests/Cases.h"
#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include "tests/framework/stream/Fields.h"
#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/Registry.h>
#include <zep/objects/Line.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <gmock/gmock.h>

#include <QFileInfo>
#include <QLocale>

#include <malloc.h>

namespace ZEP {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

using Storage = FolderTest;

void Build(TZEPScene& scene) {
    auto* line = Add<TZEPLine>(&scene);
    line->SetName(QStringLiteral("Line1"));
    line->P2()->SetData(1, 2, 3);
    line->SetColor(clYellow);
    auto* group = Add<TZEPObject>(&scene);
    group->XForm()->Scale()->SetData(1, 0, 1);
    auto* polyline = new TZEPPolyline(&scene);
    polyline->Vertexes()->Add()->SetPoint({4, 5, 6});
    polyline->SetDisplayList(7);
    polyline->SetParentComponent(group);
    auto* camera = Add<TZEPCamera>(&scene);
    camera->SetName(QStringLiteral("Camera1"));
    camera->SetTargetObject(line);
    polyline->SetDisplayList(0);
}

std::vector<std::string> TreeOf(TZEPObject& root) {
    std::vector<std::string> values = ValuesOf(root);
    for (int i = 0; i < root.GetItemsCount(); ++i) {
        values.push_back(root.GetItem(i)->ClassName().toStdString());
        for (const std::string& value : TreeOf(*root.GetItem(i))) values.push_back("  " + value);
    }
    return values;
}

TEST_F(Storage, ATreeComesBackFromEitherFile) {
    TZEPScene scene;
    Build(scene);
    scene.SaveToFile(Path("a.zep"));
    scene.SaveToTextFile(Path("a.zept"));
    TZEPScene binary;
    binary.LoadFromFile(Path("a.zep"));
    TZEPScene text;
    text.LoadFromTextFile(Path("a.zept"));
    EXPECT_EQ(TreeOf(binary), TreeOf(scene));
    EXPECT_EQ(TreeOf(text), TreeOf(scene));
    EXPECT_EQ(binary.GetItem(1)->XForm()->Scale()->Data(), (TGLArrayd3{1, 0, 1}));
    EXPECT_EQ(binary.GetItem(1)->Owner(), &binary);
    EXPECT_EQ(binary.GetItem(1)->GetItem(0)->Scene(), &binary);
    text.SaveToFile(Path("b.zep"));
    EXPECT_EQ(Contents("b.zep"), Contents("a.zep"));
}

/// The faults that are passed over, and what has become of a stream, saved again.
TEST_F(Storage, WhatIsReadIsAsItIsWrittenDown) {
    ExpectCases("text/reading.txt", [](const TCase& c) {
        const std::string name = c.Input.substr(c.Input.find("TZEP"));
        const auto* entry = TClassRegistry::Instance().Find(
            QString::fromStdString(name.substr(0, name.find_first_of(" \n"))));
        TComponent owner;
        TComponent& root = *entry->Make(&owner);
        std::string text;
        for (const std::string& error : LoadInto(root, c.Input)) text += error + "\n";
        return text + SavedAs(TStreamForm::Text, root);
    });
}

TEST_F(Storage, AFileWithAFaultIsReadAllTheSame) {
    Put("faulty.zept", "object TZEPPolyline NoSuch = 5 MinZValue = 42 end");
    TZEPPolyline tolerant;
    tolerant.LoadFromTextFile(Path("faulty.zept"));
    EXPECT_EQ(tolerant.MinZValue(), 42);
}

TEST_F(Storage, ReferencesAreFoundInTheStreamThenAmongOwnersThenInTheTree) {
    TComponent form;
    auto* library = new TZEPMaterialLibrary(&form);
    library->SetName(QStringLiteral("Library1"));
    auto* scene = new TZEPScene(&form);
    auto* group = Add<TZEPObject>(scene);
    TZEPObject stranger;
    stranger.SetName(QStringLiteral("Stranger"));
    stranger.SetParentComponent(scene);
    EXPECT_THAT(LoadInto(*scene, "object S: TZEPScene MaterialLibrary = library1 end"), IsEmpty());
    EXPECT_EQ(scene->MaterialLibrary(), library);

    const std::string camera = "object G: TZEPObject object A: TZEPCamera PositionObject = ";
    const auto load = [&](const std::string& name) {
        group->Clear();
        const auto errors = LoadInto(*group, camera + name + " end end");
        auto* object = static_cast<TZEPCamera*>(group->GetItem(0))->PositionObject();
        return errors.empty() ? (object ? object->Name().toStdString() : "none") : errors.front();
    };
    EXPECT_EQ(load("Stranger"), "Stranger");
    EXPECT_EQ(load("NoSuch"), "none");
    EXPECT_THAT(load("Library1"), HasSubstr("Library1 is a TZEPMaterialLibrary, which cannot be "
                                            "referred to here"));
    stranger.SetParentComponent(nullptr);
}

TEST_F(Storage, ASceneBelowKeepsItsOwnMaterials) {
    TZEPScene scene;
    EXPECT_THAT(LoadInto(scene, "object TZEPScene object TZEPScene MaterialLibrary = M "
                                "object M: TZEPMaterialLibrary end end end"),
                IsEmpty());
    EXPECT_THAT(SavedAs(TStreamForm::Text, scene), HasSubstr("object M: TZEPMaterialLibrary"));
}

TEST_F(Storage, ABrokenStreamRaisesItsPlaceAndLeavesTheTree) {
    TZEPScene scene;
    Build(scene);
    scene.SaveToFile(Path("a.zep"));
    scene.SaveToTextFile(Path("a.zept"));
    const std::vector<std::string> before = TreeOf(scene);
    for (const char* name : {"a.zep", "a.zept"}) {
        QFile file(Path(name));
        ASSERT_TRUE(file.resize(file.size() / 2));
    }
    EXPECT_THAT(ErrorOf([&] { scene.LoadFromFile(Path("a.zep")); }), HasSubstr("a.zep: offset "));
    EXPECT_EQ(scene.UpdateLevel(), 1) << "the caller ends it";
    scene.EndUpdate(true);
    EXPECT_THAT(ErrorOf([&] { scene.LoadFromTextFile(Path("a.zept")); }),
                HasSubstr("a.zept: line "));
    scene.EndUpdate(true);
    EXPECT_THAT(ErrorOf([&] { scene.LoadFromFile(Path("a.zept")); }),
                HasSubstr("expected a component stream, which begins with \"TPF0\""));
    scene.EndUpdate(true);
    EXPECT_EQ(ErrorOf([&] { scene.LoadFromFile(Path("none.zep")); }),
              "Can't read \"" + Path("none.zep").toStdString() + "\": no such file.");
    EXPECT_EQ(scene.UpdateLevel(), 0) << "nothing was begun";
    EXPECT_EQ(TreeOf(scene), before);
}

TEST_F(Storage, ColoursOfTheSystemAreStoredAsSuchInAnyLocale) {
    TZEPLine line;
    line.SetColor(clBtnFace);
    line.XForm()->Translate()->SetX(1234567.5);
    const std::string text = SavedAs(TStreamForm::Text, line);
    EXPECT_THAT(text, HasSubstr("  Color = -2147483633\n"));
    EXPECT_THAT(text, HasSubstr("  Material.FrontFace.Ambient = -2147483633\n"));
    EXPECT_THAT(text, HasSubstr("  XForm.Translate.X = 1234567.5\n"));
    TZEPScene scene;
    scene.SetBackgroundColor(clWindow);
    EXPECT_THAT(SavedAs(TStreamForm::Text, scene), HasSubstr("  BackgroundColor = -2147483643\n"));
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(SavedAs(TStreamForm::Text, line), text);
    TZEPLine loaded;
    EXPECT_THAT(LoadInto(loaded, text), IsEmpty());
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(loaded.Color(), clBtnFace);
}

// --- what saving does to the tree
// ------------------------------------------------------------------

std::size_t BytesInUse() {
    return mallinfo2().uordblks;
}

TEST_F(Storage, SavingAndLoadingMakeNoSubObjectsThatNobodyAskedFor) {
    constexpr int Count = 1000;
    const auto fill = [](TZEPScene& scene) {
        for (int i = 0; i < Count; ++i) {
            auto* line = Add<TZEPLine>(&scene);
            line->P2()->SetData(1, 2, 3);
            line->SetColor(clYellow);
        }
    };
    const std::size_t start = BytesInUse();
    TZEPScene scene;
    fill(scene);
    const std::size_t own = BytesInUse() - start;
    if (own == 0) GTEST_SKIP() << "the sanitizer's heap does not tell";
    scene.SaveToFile(Path("lines.zep"));
    EXPECT_LT(BytesInUse() - start, own + 20'000);
    const std::size_t before = BytesInUse();
    TZEPScene loaded;
    loaded.LoadFromFile(Path("lines.zep"));
    EXPECT_LT(BytesInUse() - before, own + own / 10);
    EXPECT_EQ(loaded.GetItem(Count - 1)->XForm()->Scale()->X(), 1);
}

// --- saving never loses what was there
// -------------------------------------------------------------

TEST_F(Storage, ATreeThatIsTooDeepWhereItIsReadLeavesWhatIsThere) {
    TZEPObject branch;
    Add<TZEPObject>(Add<TZEPObject>(&branch));
    branch.SaveToTextFile(Path("branch.zept"));
    TZEPScene scene;
    TZEPObject* above = nullptr; // with room for one level less than the branch has
    TZEPObject* deepest = &scene;
    for (int i = 1; i < DeepestNesting; ++i) deepest = Add<TZEPObject>(above = deepest);
    EXPECT_EQ(ErrorOf([&] { deepest->LoadFromTextFile(Path("branch.zept")); }),
              "Objects would be nested deeper than 1000 levels");
    EXPECT_EQ(ErrorOf([&] { above->LoadFromTextFile(Path("branch.zept")); }), "");
    EXPECT_EQ(above->GetItemsCount(), 1);
}

TEST_F(Storage, ATreeThatCannotBeStoredLeavesTheOldFile) {
    TZEPScene scene;
    scene.SaveToTextFile(Path("a.zept"));
    const QByteArray old = Contents("a.zept");
    TZEPObject* parent = &scene;
    for (int i = 0; i < MaxStreamDepth; ++i) {
        auto* child = new TZEPObject(&scene);
        child->SetParentComponent(parent);
        parent = child;
    }
    EXPECT_EQ(ErrorOf([&] { scene.SaveToTextFile(Path("a.zept")); }),
              "A tree nested deeper than 1000 levels cannot be stored");
    EXPECT_EQ(Contents("a.zept"), old);
    delete parent;
    scene.SaveToTextFile(Path("a.zept"));
    TZEPScene loaded;
    loaded.LoadFromTextFile(Path("a.zept"));
    EXPECT_EQ(loaded.GetItemsCount(), 1);
}

TEST_F(Storage, WhereNothingCanBeWrittenTheFileIsNamed) {
    TZEPScene scene;
    const QString name = Path("no/such/folder/a.zep");
    EXPECT_THAT(ErrorOf([&] { scene.SaveToFile(name); }),
                HasSubstr("Can't write \"" + name.toStdString() + "\": "));
    EXPECT_THAT(ErrorOf([&] { scene.SaveToFile(QFileInfo(name).path()); }),
                HasSubstr("Can't write"));
}

} // namespace
} // namespace ZEP
