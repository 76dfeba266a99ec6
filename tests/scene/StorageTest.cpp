#include "tests/ErrorOf.h"
#include "tests/framework/stream/Fields.h"
#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Line.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>

#include <gmock/gmock.h>

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

namespace ZEP {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

QString Contents(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void Put(const QString& fileName, const QByteArray& contents) {
    QFile file(fileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(contents), contents.size());
}

class Storage : public testing::Test {
protected:
    [[nodiscard]] QString Path(const char* name) const {
        return m_folder.filePath(QString::fromLatin1(name));
    }

private:
    QTemporaryDir m_folder;
};

void Build(TZEPScene& scene) {
    auto* line = new TZEPLine(&scene);
    line->SetName(QStringLiteral("Line1"));
    line->P2()->SetData(1, 2, 3);
    line->SetColor(clYellow);
    line->SetParentComponent(&scene);
    auto* group = new TZEPObject(&scene);
    group->XForm()->Scale()->SetData(1, 0, 1);
    group->SetParentComponent(&scene);
    auto* polyline = new TZEPPolyline(&scene);
    polyline->Vertexes()->Add()->SetPoint({4, 5, 6});
    polyline->SetDisplayList(7);
    polyline->SetParentComponent(group);
    auto* camera = new TZEPCamera(&scene);
    camera->SetName(QStringLiteral("Camera1"));
    camera->SetTargetObject(line);
    camera->SetParentComponent(&scene);
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
    EXPECT_EQ(Contents(Path("b.zep")), Contents(Path("a.zep")));
}

TEST_F(Storage, ATargetKeepsItsNameParentAndListenersAndReplacesItsChildren) {
    TZEPScene scene;
    auto* cube = new TZEPObject(&scene);
    cube->SetName(QStringLiteral("Cube1"));
    cube->SetIdent(QStringLiteral("cube"));
    cube->SetParentComponent(&scene);
    (new TZEPLine(&scene))->SetParentComponent(cube);
    cube->SaveToFile(Path("cube.zep"));

    auto* box = new TZEPObject(&scene);
    box->SetName(QStringLiteral("Box7"));
    box->SetParentComponent(&scene);
    (new TZEPObject(&scene))->SetParentComponent(box);
    std::vector<TZEPObjectAction> actions;
    const TZEPObjectNotify listener{
        [](void* context, TZEPObject*, TZEPObjectAction action, const void*) {
            static_cast<std::vector<TZEPObjectAction>*>(context)->push_back(action);
        },
        &actions};
    box->RegisterNotify(listener);
    box->LoadFromFile(Path("cube.zep"));
    box->UnregisterNotify(listener);

    EXPECT_EQ(box->Name(), QStringLiteral("Box7"));
    EXPECT_EQ(box->Ident(), QStringLiteral("cube"));
    EXPECT_EQ(box->Parent(), &scene);
    EXPECT_EQ(scene.FindComponent(QStringLiteral("Box7")), box);
    ASSERT_EQ(box->GetItemsCount(), 1);
    EXPECT_EQ(box->GetItem(0)->ClassName(), QStringLiteral("TZEPLine"));
    EXPECT_THAT(actions, ElementsAre(saRemove, saInsert));
}

TEST_F(Storage, AFreeNameIsTakenForAMomentAndGivenBack) {
    TZEPObject cube;
    cube.SetName(QStringLiteral("Cube1"));
    cube.SaveToFile(Path("cube.zep"));
    TZEPObject box;
    box.SetName(QStringLiteral("Box7"));
    QStringList oldNames;
    const TZEPObjectNotify listener{
        [](void* context, TZEPObject*, TZEPObjectAction, const void* data) {
            *static_cast<QStringList*>(context) << *static_cast<const QString*>(data);
        },
        &oldNames};
    box.RegisterNotify(listener);
    box.LoadFromFile(Path("cube.zep"));
    box.UnregisterNotify(listener);
    EXPECT_EQ(oldNames, (QStringList{QStringLiteral("Box7"), QStringLiteral("Cube1")}));
    EXPECT_EQ(box.Name(), QStringLiteral("Box7"));
}

class TCountingPanel : public TZEPScenePanel {
public:
    void Invalidate() override { ++Count; }
    void SceneDestroyed() override {}
    int Count = 0;
};

TEST_F(Storage, LoadingInvalidatesOnce) {
    TZEPScene scene;
    Build(scene);
    scene.SaveToFile(Path("a.zep"));
    TCountingPanel panel;
    scene.RegisterGLPanel(&panel);
    scene.LoadFromFile(Path("a.zep"));
    EXPECT_EQ(panel.Count, 1);
    EXPECT_EQ(scene.UpdateLevel(), 0);
}

TEST_F(Storage, WhatIsNotKnownOrDoesNotFitIsPassedOver) {
    const struct {
        const char* Faulty;
        const char* Error;
    } rows[] = {
        {"NoSuch = 5", "line 2, column 3: the property NoSuch is not known"},
        {"No.Such.Thing = (1 (2))", "the property No.Such.Thing is not known"},
        {"XForm.NoSuch = <item A = 1 end>", "the property XForm.NoSuch is not known"},
        {"XForm.Matrix = {00}", "Stream read error"},
        {"XForm.Matrix = 5", "XForm.Matrix: expected binary data"},
        {"XForm = 5", "XForm: expected a property of it"},
        {"Color = 'red'", "Color: expected a colour"},
        {"Color = clNoSuch", "Color: expected a colour"},
        {"Color = $1FFFFFFFF", "Color: expected a colour"},
        {"DrawType = dtNoSuch", "DrawType: expected a value of its enumeration"},
        {"DrawType = 1", "DrawType: expected a value of its enumeration"},
        {"Segments = 1.5", "Segments: expected an integer within its range"},
        {"Segments = $FFFFFFFF", "Segments: expected an integer within its range"},
        {"Closed = 1", "Closed: expected True or False"},
        {"MaxZValue = [a, b]", "MaxZValue: expected a number"},
        {"Ident = True", "Ident: expected a string"},
        {"Vertexes = 5", "Vertexes: expected a collection"},
        {"Vertexes = <item X = 'a' end>", "X: expected a number"},
        {"Vertexes = <> Vertexes = <item end>", "Vertexes: expected this collection only once"},
        {"Name = 'Other'", "Name: expected a property that can be set"},
        {"DisplayList = 5", "DisplayList: expected a property that can be set"},
        {"Material.Texture.Image.Data = {00}", "The data is no picture of a known format"},
    };
    for (const auto& row : rows) {
        TZEPPolyline polyline;
        const std::string text =
            std::string("object TZEPPolyline\n  ") + row.Faulty + "\n  MinZValue = 42\nend\n";
        EXPECT_THAT(LoadInto(polyline, text), ElementsAre(HasSubstr(row.Error))) << row.Faulty;
        EXPECT_EQ(polyline.MinZValue(), 42) << row.Faulty;
        EXPECT_EQ(polyline.DisplayList(), 0);

        Put(Path("faulty.zept"), QByteArray::fromStdString(text));
        TZEPPolyline tolerant;
        tolerant.LoadFromTextFile(Path("faulty.zept"));
        EXPECT_EQ(tolerant.MinZValue(), 42) << row.Faulty;
    }
}

TEST_F(Storage, ChildrenThatCannotBeMadeArePassedOverWithWhatIsInThem) {
    const std::string text = "object S: TZEPScene\n"
                             "  object A: TNoSuch X = 1 object B: TZEPLine end end\n"
                             "  object C: TZEPLine end\n"
                             "  object c: TZEPLine end\n"
                             "  object D: TZEPCamera TargetObject = C PositionObject = B end\n"
                             "  object M: TZEPMaterialLibrary end\n"
                             "end\n";
    TZEPScene scene;
    EXPECT_THAT(LoadInto(scene, text),
                ElementsAre("line 2, column 3: the class TNoSuch is not known",
                            "line 4, column 3: A component named c already exists"));
    ASSERT_EQ(scene.GetItemsCount(), 3);
    auto* camera = static_cast<TZEPCamera*>(scene.GetItem(2));
    EXPECT_EQ(camera->TargetObject(), scene.GetItem(0));
    EXPECT_EQ(camera->PositionObject(), nullptr);
    EXPECT_TRUE(scene.FindComponent(QStringLiteral("M"))) << "owned, though it stands in no tree";
}

TEST_F(Storage, ReferencesAreFoundInTheStreamThenAmongOwnersThenInTheTree) {
    TComponent form;
    auto* library = new TZEPMaterialLibrary(&form);
    library->SetName(QStringLiteral("Library1"));
    auto* scene = new TZEPScene(&form);
    auto* group = new TZEPObject(scene);
    group->SetParentComponent(scene);
    TZEPObject stranger;
    stranger.SetName(QStringLiteral("Stranger"));
    stranger.SetParentComponent(scene);
    EXPECT_THAT(LoadInto(*scene, "object S: TZEPScene MaterialLibrary = library1 end"), IsEmpty());
    EXPECT_EQ(scene->MaterialLibrary(), library);

    const std::string camera = "object G: TZEPObject object A: TZEPCamera PositionObject = ";
    const auto load = [&](const std::string& name, const char* more = "") {
        group->Clear();
        const auto errors = LoadInto(*group, camera + name + " end " + more + " end");
        auto* object = static_cast<TZEPCamera*>(group->GetItem(0))->PositionObject();
        return errors.empty() ? (object ? object->Name().toStdString() : "none") : errors.front();
    };
    EXPECT_EQ(load("B", "object B: TZEPLine end"), "B");
    EXPECT_EQ(load("G"), "G");
    EXPECT_EQ(load("Stranger"), "Stranger");
    EXPECT_EQ(load("nil"), "none");
    EXPECT_EQ(load("NoSuch"), "none");
    EXPECT_THAT(load("Library1"), HasSubstr("Library1 is a TZEPMaterialLibrary, which cannot be "
                                            "referred to here"));
    // A ring of references is two references like any others.
    EXPECT_EQ(load("C", "object C: TZEPCamera PositionObject = A TargetObject = C end"), "C");
    EXPECT_EQ(static_cast<TZEPCamera*>(group->GetItem(1))->PositionObject(), group->GetItem(0));
    stranger.SetParentComponent(nullptr);
}

TEST_F(Storage, ValuesThatAreZeroComeBackWhereTheInitialOneIsNot) {
    TZEPCamera camera;
    camera.SetFocalLength(60);
    camera.SetNearClipPlane(0);
    camera.SetFarClipPlane(0);
    camera.Up()->SetData(0, 1, 0);
    camera.XForm()->Scale()->SetData(0, 0, 0);
    TZEPCamera loaded;
    EXPECT_THAT(LoadInto(loaded, SavedAs(TStreamForm::Binary, camera)), IsEmpty());
    EXPECT_EQ(ValuesOf(loaded), ValuesOf(camera));
    EXPECT_EQ(loaded.GetMatrix(), camera.GetMatrix());

    TZEPLine line;
    line.Material()->Texture()->SetTilingS(0);
    line.XForm()->mTranslate(0, 0, 0);
    const std::string text = SavedAs(TStreamForm::Text, line);
    EXPECT_THAT(text, testing::Not(HasSubstr("Matrix")));
    TZEPLine loadedLine;
    EXPECT_THAT(LoadInto(loadedLine, text), IsEmpty());
    EXPECT_EQ(loadedLine.Material()->Texture()->TilingS(), 0);
    EXPECT_EQ(loadedLine.Material()->Texture()->TilingT(), 1);
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
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(SavedAs(TStreamForm::Text, line), text);
    TZEPLine loaded;
    EXPECT_THAT(LoadInto(loaded, text), IsEmpty());
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(loaded.Color(), clBtnFace);
    TZEPLine named;
    EXPECT_THAT(LoadInto(named, "object TZEPLine Color = CLbtnFACE end"), IsEmpty());
    EXPECT_EQ(named.Color(), clBtnFace);
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
            auto* line = new TZEPLine(&scene);
            line->P2()->SetData(1, 2, 3);
            line->SetColor(clYellow);
            line->SetParentComponent(&scene);
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

/// Files may not grow beyond a size for as long as it lives, as on a disk that is full.
class TFileSizeLimit {
public:
    explicit TFileSizeLimit(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~TFileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, SIG_DFL);
    }
    Q_DISABLE_COPY_MOVE(TFileSizeLimit)

private:
    rlimit m_old{};
};

TEST_F(Storage, WithAFullDiskTheOldFileStands) {
    TZEPScene scene;
    Build(scene);
    scene.SaveToFile(Path("a.zep"));
    const QString old = Contents(Path("a.zep"));
    for (int i = 0; i < 2000; ++i) (new TZEPLine(&scene))->SetParentComponent(&scene);
    for (const rlim_t size : {rlim_t{100}, rlim_t{50'000}, rlim_t{200'000}}) {
        const TFileSizeLimit limit(size);
        EXPECT_THAT(ErrorOf([&] { scene.SaveToFile(Path("a.zep")); }),
                    HasSubstr("Can't write \"" + Path("a.zep").toStdString() + "\": "));
    }
    EXPECT_EQ(Contents(Path("a.zep")), old);
    EXPECT_EQ(QDir(QFileInfo(Path("a.zep")).path()).entryList(QDir::Files),
              QStringList{QStringLiteral("a.zep")});
}

TEST_F(Storage, ATreeThatCannotBeStoredLeavesTheOldFile) {
    TZEPScene scene;
    scene.SaveToTextFile(Path("a.zept"));
    const QString old = Contents(Path("a.zept"));
    TZEPObject* parent = &scene;
    for (int i = 0; i < MaxStreamDepth; ++i) {
        auto* child = new TZEPObject(&scene);
        child->SetParentComponent(parent);
        parent = child;
    }
    EXPECT_EQ(ErrorOf([&] { scene.SaveToTextFile(Path("a.zept")); }),
              "A tree nested deeper than 1000 levels cannot be stored");
    EXPECT_EQ(Contents(Path("a.zept")), old);
    delete parent;
    scene.SaveToTextFile(Path("a.zept"));
    TZEPScene loaded;
    loaded.LoadFromTextFile(Path("a.zept"));
    EXPECT_EQ(loaded.GetItemsCount(), 1);
}

TEST_F(Storage, ALinkStaysALinkAndPermissionsStay) {
    TZEPScene scene;
    scene.SaveToFile(Path("real.zep"));
    ASSERT_TRUE(QFile::link(Path("real.zep"), Path("link.zep")));
    ASSERT_EQ(chmod(QFile::encodeName(Path("real.zep")).constData(), 0640), 0);
    Build(scene);
    scene.SaveToFile(Path("link.zep"));
    EXPECT_TRUE(QFileInfo(Path("link.zep")).isSymLink());
    EXPECT_GT(QFileInfo(Path("real.zep")).size(), 500);
    struct stat status {};
    ASSERT_EQ(stat(QFile::encodeName(Path("real.zep")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
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
