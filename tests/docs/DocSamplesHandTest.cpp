#include "tests/view/NativeWindow.h"
#include <zep/ZEPAssimp.h>
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/scene/Vectors.h>

#include <QFile>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

using namespace ZEP;

// What the documents define. Each sample is called here; who adds one calls it and counts it.
static_assert(ZEP_DOC_SAMPLES == 31, "a sample of the documents is not called here");
void AddBallOnFloor(TZEPScene& scene);
void AddDrilledCube(TZEPScene& scene);
void AddFan(TZEPScene& scene);
void AddMirror(TZEPScene& scene);
void AddRow(TZEPScene& scene, TZEPObject& model, int count);
void AddSun(TZEPScene& scene);
void AddTable(TZEPScene& scene);
TZEPCamera* AddCamera(TZEPScene& scene);
void OpenDrawing(TZEPScene& scene, const QString& fileName);
void OpenModel(TZEPScene& scene, const QString& fileName);
void OpenPart(TZEPScene& scene, const QString& fileName);
void OpenPoints(TZEPObject& points, const QString& fileName);
void OpenProgram(TZEPScene& scene, const QString& fileName);
void OpenScene(TZEPPanel& panel, TZEPScene& scene, const QString& fileName);
TZEPObject* ObjectAt(TZEPPanel& panel, int x, int y);
QImage PictureOf(TZEPCamera& camera, const QSize& size);
void PrintHalfAsLarge(TZEPPanel& panel, const QString& fileName);
void ReadAside(TZEPScene& scene, const QString& fileName,
               const std::function<void(const QString& error)>& done);
void SaveAndLoad(TZEPObject& content, const QString& folder);
void ShowEffects(TZEPScene& scene);
void ShowOnPaper(TZEPScene& scene, TZEPBatch& drawing);
void ShowSheet(TZEPBatch& model, TZEPCamera& camera, double aspect);
void ShowTree(QTreeView& tree, TZEPScene& scene);
void ShowTwice(QWidget& window, TZEPScene& scene);
std::unique_ptr<TZEPBackdrop> ShowWhole(TZEPScene& scene, TZEPCamera& camera);
void CutOpen(TZEPPanel& panel, TZEPScene& scene);
void CutProgram(TZEPScene& scene, std::string_view program);
void MeasureDistances(TZEPPanel& panel, const std::function<void(const QString&)>& tell);
void AddCadMouse(TZEPPanel* panel, bool flat);
QString TryToOpen(TZEPObject& drawing, const QString& fileName);

namespace {

QString Example(const char* name) {
    return QStringLiteral(ZEP_SOURCE "/examples/") + QLatin1String(name);
}

/// A file of the test's own.
QString Written(const QTemporaryDir& folder, const char* name, const char* text) {
    QFile file(folder.filePath(QLatin1String(name)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return file.fileName();
}

/// The share of pixels that are clearly seen on black.
double BrightShare(const QImage& picture) {
    int bright = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            bright += picture.pixelColor(x, y).value() >= 110 ? 1 : 0;
    return static_cast<double>(bright) / (picture.width() * picture.height());
}

/// \param least  half of what is bright in the picture that was looked at
void ExpectBright(const QImage& picture, const QString& name, double least) {
    QDir().mkpath(QStringLiteral(ZEP_TEST_OUTPUT));
    picture.save(QStringLiteral(ZEP_TEST_OUTPUT "/doc-%1.png").arg(name));
    EXPECT_GE(BrightShare(picture), least) << name.toStdString();
}

class DocSamples : public testing::Test {
protected:
    void SetUp() override {
        if (!NativeWindow::HasDisplay()) GTEST_SKIP() << "there is no X display";
    }
};

struct SampleCase {
    const char* Name;
    void (*Fill)(TZEPScene& scene);
    double Least;
};

void AddPrism(TZEPScene& scene) {
    auto* prism = static_cast<TZEPObject*>(
        TClassRegistry::Instance().Find(QStringLiteral("TPrism"))->Make(&scene));
    prism->SetParentComponent(&scene);
    EXPECT_TRUE(prism->setProperty("Height", 0.0));
    EXPECT_TRUE(prism->setProperty("Sides", 1));
    EXPECT_EQ(prism->property("Sides"), 3);
    const QTemporaryDir folder;
    SaveAndLoad(*prism, folder.path());
    EXPECT_EQ(prism->property("Height"), 0.0);
    prism->setProperty("Height", 1.5);
    prism->setProperty("Sides", 7);
    Add<TZEPHeadlight>(&scene);
}

constexpr SampleCase Cases[] = {
    {"table", AddTable, 0.08},
    {"fan", AddFan, 0.02},
    {"prism", AddPrism, 0.09},
    {"shadow",
     [](TZEPScene& scene) {
         ShowEffects(scene);
         AddBallOnFloor(scene);
     },
     0.1},
    {"sun",
     [](TZEPScene& scene) {
         AddSun(scene);
         Add<TZEPBox>(&scene);
     },
     0.1},
    {"mirror",
     [](TZEPScene& scene) {
         ShowEffects(scene);
         AddMirror(scene);
         auto* ball = Add<TZEPSphere>(&scene);
         ball->XForm()->Translate()->SetData(0, -1.5, 0.5);
         ball->SetColor(clYellow);
         Add<TZEPHeadlight>(&scene);
     },
     0.04},
    {"row",
     [](TZEPScene& scene) {
         AddRow(scene, *Add<TZEPTeapot>(&scene), 4);
         Add<TZEPHeadlight>(&scene);
     },
     0.02},
    {"drilled",
     [](TZEPScene& scene) {
         AddDrilledCube(scene);
         Add<TZEPHeadlight>(&scene);
     },
     0.14},
    {"program", [](TZEPScene& scene) { OpenProgram(scene, Example("parts/bracket.nc")); }, 0.025},
    {"drawing", [](TZEPScene& scene) { OpenDrawing(scene, Example("drawings/flange.dxf")); }, 0.02},
    {"model", [](TZEPScene& scene) { OpenModel(scene, Example("models/gears.3ds")); }, 0.15},
    {"part",
     [](TZEPScene& scene) {
         const QTemporaryDir folder;
         const char* const wall = "v 0 0 0\nv 4 0 0\nv 4 4 0\nv 0 4 0\nf 1 2 3 4\n";
         if (TAssimpConverter::IsAvailable())
             return OpenPart(scene, Written(folder, "wall.obj", wall));
         Add<TZEPHeadlight>(&scene);
         Add<TZEPBox>(&scene);
     },
     0.1},
    {"points",
     [](TZEPScene& scene) {
         const QTemporaryDir folder;
         scene.SetSceneAmbientColor(clWhite);
         OpenPoints(*Add<TZEPObject>(&scene), Written(folder, "points", "0 0 0\n1 0 1\n\n0 1 2\n"));
     },
     0.0013},
};

// Their pictures stand in the tests' output, and are dark where a sample forgets its light.
TEST_F(DocSamples, DrawSomethingBright) {
    for (const SampleCase& sample : Cases) {
        TZEPScene scene;
        sample.Fill(scene);
        ExpectBright(PictureOf(*AddCamera(scene), {320, 240}), QLatin1String(sample.Name),
                     sample.Least);
    }
}

TEST_F(DocSamples, ShowTheWholeBeforeABackdrop) {
    TZEPScene scene;
    auto* box = Add<TZEPBox>(&scene);
    box->SetColor(clWhite);
    auto* camera = Add<TZEPCamera>(&scene);
    const auto backdrop = ShowWhole(scene, *camera);
    ExpectBright(PictureOf(*camera, {320, 240}), QStringLiteral("whole"), 0.1);
    const QTemporaryDir folder;
    TZEPPanel panel;
    panel.SetCamera(camera);
    PrintHalfAsLarge(panel, folder.filePath(QStringLiteral("half.pdf")));
    QFile pdf(folder.filePath(QStringLiteral("half.pdf")));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.readAll().contains("/Subtype /Image"));
}

TEST_F(DocSamples, ShowASceneTwice) {
    TZEPScene scene;
    AddTable(scene);
    QWidget window;
    window.resize(640, 320);
    ShowTwice(window, scene);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const auto panels = window.findChildren<TZEPPanel*>();
    ASSERT_EQ(panels.size(), 2);
    ExpectBright(panels[0]->GrabFrame(), QStringLiteral("above"), 0.3);
    ExpectBright(panels[1]->GrabFrame(), QStringLiteral("side"), 0.04);
}

TEST_F(DocSamples, FindTheCameraOfASceneThatWasLoaded) {
    const QTemporaryDir folder;
    TZEPScene scene;
    AddTable(scene);
    TZEPPanel panel;
    panel.resize(320, 240);
    panel.SetCamera(AddCamera(scene));
    scene.SaveToFile(folder.filePath(QStringLiteral("scene")));
    OpenScene(panel, scene, folder.filePath(QStringLiteral("scene")));
    ExpectBright(panel.RenderToCanvas({320, 240}), QStringLiteral("loaded"), 0.08);
    EXPECT_TRUE(ObjectAt(panel, panel.Width() / 2, panel.Height() / 4));
    EXPECT_FALSE(ObjectAt(panel, 2, 2));
    AddCadMouse(&panel, false);
    const auto depth = [&panel] {
        return Distance(panel.Camera()->GetPosition(), panel.Camera()->GetTarget());
    };
    const double before = depth();
    panel.PanelControl()->MouseWheelMove(panel, {}, 120, {20, 20});
    EXPECT_LT(depth(), before);
    QString told;
    MeasureDistances(panel, [&told](const QString& text) { told = text; });
    EXPECT_EQ(told, QStringLiteral("Distance: click the first point"));
    CutOpen(panel, scene);
    EXPECT_TRUE(AnyCuts(panel.Camera()->Sections()));
}

TEST_F(DocSamples, ShowLinesOnPaperAndInATree) {
    TZEPScene scene;
    auto* drawing = Add<TZEPBatch>(&scene);
    for (int i = 0; i < 30; ++i) {
        auto* line = Add<TZEPLine>(drawing);
        line->P1()->SetData(i, 0, 0);
        line->P2()->SetData(0, 0, 30 - i);
        line->SetColor(clWhite);
    }
    const QImage onBlack = PictureOf(*AddCamera(scene), {320, 240});
    TZEPCamera* camera = AddCamera(scene);
    ShowSheet(*drawing, *camera, 4.0 / 3);
    EXPECT_GT(BrightShare(PictureOf(*camera, {320, 240})), 0.15) << "the paper";
    ShowOnPaper(scene, *drawing);
    QImage onPaper = PictureOf(*AddCamera(scene), {320, 240});
    onPaper.invertPixels();
    EXPECT_GT(BrightShare(onBlack), 0.02);
    EXPECT_NEAR(BrightShare(onPaper), BrightShare(onBlack), 0.01);

    QTreeView tree;
    ShowTree(tree, scene);
    EXPECT_EQ(tree.model()->rowCount(), scene.GetItemsCount());
    tree.selectionModel()->select(tree.model()->index(0, 0), QItemSelectionModel::Select);
    EXPECT_TRUE(drawing->Selected());
}

TEST_F(DocSamples, CutAProgram) {
    TZEPScene scene;
    CutProgram(scene, "T1 M6 (D=4)\nG0 X5 Y5 Z5\nG1 Z-2 F100\nX40\n");
    ASSERT_EQ(scene.GetItemsCount(), 1);
    EXPECT_NE(scene.GetItem(0)->ClassName().indexOf(QStringLiteral("Workpiece")), -1);
}

TEST_F(DocSamples, ReadBesideTheWindow) {
    TZEPScene scene;
    QStringList errors;
    const auto done = [&errors](const QString& error) { errors << error; };
    ReadAside(scene, Example("drawings/flange.dxf"), done);
    ReadAside(scene, QStringLiteral("missing.dxf"), done);
    EXPECT_EQ(scene.GetItemsCount(), 0);
    ASSERT_TRUE(QTest::qWaitFor([&errors] { return errors.size() == 2; }));
    EXPECT_EQ(errors.filter(QStringLiteral("missing.dxf")).size(), 1);
    std::vector<TZEPObject*> objects;
    scene.ListChildren(objects);
    EXPECT_GT(objects.size(), 10U);
    for (const TZEPObject* object : objects) EXPECT_EQ(object->thread(), scene.thread());
    ExpectBright(PictureOf(*AddCamera(scene), {320, 240}), QStringLiteral("aside"), 0.02);
}

TEST_F(DocSamples, SayWhatIsWrongWithAFile) {
    const QTemporaryDir folder;
    TZEPScene scene;
    EXPECT_TRUE(
        TryToOpen(scene, QStringLiteral("missing.dxf")).contains(QStringLiteral("missing.dxf")));
    try {
        OpenPoints(scene, Written(folder, "points", "0 0 0\n1 0\n"));
        FAIL() << "nothing was raised";
    } catch (const Exception& error) {
        EXPECT_EQ(error.Message(), QStringLiteral("TPointReader.LoadFromFile: three numbers "
                                                  "expected in line 2, not 2"));
        EXPECT_EQ(error.Origin().Place.Line, 2);
    }
}

TEST_F(DocSamples, TheHostOfTheReadmeShowsItsScene) {
    QProcess host;
    host.setProcessChannelMode(QProcess::ForwardedChannels);
    host.start(QStringLiteral(ZEP_PROGRAMS "/zep_readme"), QStringList());
    QImage screen;
    const bool shown = QTest::qWaitFor(
        [&screen] {
            screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
            return BrightShare(screen) > 0.04;
        },
        20000);
    screen.save(QStringLiteral(ZEP_TEST_OUTPUT "/doc-readme.png"));
    EXPECT_TRUE(shown);
    EXPECT_EQ(host.state(), QProcess::Running);
    host.terminate();
    host.waitForFinished();
}

} // namespace
