#include "viewer/files/Document.h"

#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include "tests/viewer/SampleFiles.h"
#include "viewer/files/FileCameras.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/batch/Batch.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

using namespace Sample;

class Document : public FolderTest {
protected:
    static QString MaterialOf(TZEPMesh& mesh, const TZEPFace3CI& face,
                              TZEPMaterialLibrary& library) {
        const int number = face.MaterialIndex();
        if (!mesh.ColorFaces()) return QStringLiteral("own");
        if (number < 0 || number >= library.Materials()->Count()) return QStringLiteral("none");
        const QString name = (*library.Materials())[number].Ident();
        return name.isEmpty() ? QStringLiteral("unnamed") : name;
    }
    /// What each face is drawn in, in their order: "own" for its mesh's.
    static std::string Materials(TZEPObject& root, TZEPMaterialLibrary& library) {
        QStringList names;
        ForEachObject(root, [&](TZEPObject& object) {
            auto* mesh = qobject_cast<TZEPMesh*>(&object);
            for (int i = 0; mesh && i < mesh->Faces()->Count(); ++i)
                names << MaterialOf(*mesh, (*mesh->Faces())[i], library);
        });
        return names.join(QLatin1Char(' ')).toStdString();
    }
    static std::string Materials(const TDocument& document) {
        return Materials(*document.Scene(), *document.Scene()->MaterialLibrary());
    }
    QString PutModel(const char* name, const char* material, const QByteArray& more = {}) {
        return Put(name, Model(Material("unused", 1) + Material(material, 9) + Mesh("M", material) +
                               more));
    }
};

TEST_F(Document, FilesAreAddedAndClosedAndKeepTheirMaterials) {
    TDocument document;
    const QString a = PutModel("a.3ds", "red");
    const QString b = PutModel("b.3ds", "green", Mesh("plain", ""));
    const QString c = PutModel("c.3ds", "blue");
    ASSERT_TRUE(document.Open({a, b}, false));
    EXPECT_EQ(Materials(document), "red green own");
    ASSERT_TRUE(document.Add({c}, false));
    EXPECT_EQ(Materials(document), "red green own blue");
    PutModel("a.3ds", "pink", Mesh("second", "unused"));
    ASSERT_TRUE(document.Add({a}, false)) << "in its place";
    EXPECT_EQ(document.Files()[0].Name, a);
    EXPECT_EQ(document.Files().size(), 3U);
    document.Close(b);
    EXPECT_EQ(document.Scene()->MaterialLibrary()->Materials()->Count(), 4);
    for (const TOpenedFile& file : document.Files())
        EXPECT_EQ(Materials(*file.Root, *document.Scene()->MaterialLibrary()),
                  file.Name == a ? "pink unused" : "blue");
    document.Close(a);
    document.Close(c);
    document.Close(c);
    EXPECT_TRUE(document.Files().empty());
    EXPECT_EQ(document.Scene()->MaterialLibrary()->Materials()->Count(), 0);
    EXPECT_FALSE(document.Bounds());
}

TEST_F(Document, AFaceThatHasNoMaterialIsStillDrawn) {
    const QByteArray twoFaces = QByteArray::fromStdString(
        F3DS::Mesh("M", F3DS::SquarePoints() + F3DS::SquareFaces(F3DS::Group("red", {1}))));
    TDocument document;
    ASSERT_TRUE(document.Open({Put("a.3ds", Model(Material("red", 9) + twoFaces))}, false));
    EXPECT_EQ(Materials(document), "unnamed red");
    EXPECT_EQ(document.Files()[0].Materials, 1) << "but is not the file's";
}

TEST_F(Document, ReadAgainAFileKeepsWhatIsHidden) {
    TDocument document;
    const QString name = Path("a.dxf");
    Put("a.dxf", Drawing(Layer("p", 1) + Layer("q", 2) + Layer("off", -3), LineOn("p")));
    ASSERT_TRUE(document.Open({name}, false));
    const auto visible = [&](const char* layer) {
        return document.Files()[0].Root->ItemByIdent(QLatin1String(layer))->Visible();
    };
    ASSERT_FALSE(visible("off"));
    document.Files()[0].Root->ItemByIdent(QStringLiteral("off"))->SetVisible(true);
    document.Files()[0].Root->ItemByIdent(QStringLiteral("q"))->SetVisible(false);
    Put("a.dxf", Drawing(Layer("new", 1) + Layer("newly off", -1) + Layer("off", -3) +
                             Layer("q", 2) + Layer("p", 1),
                         LineOn("p") + LineOn("q")));
    ASSERT_TRUE(document.Add({name}, false));
    EXPECT_TRUE(visible("p") && visible("off") && visible("new"));
    EXPECT_FALSE(visible("q") || visible("newly off"));
}

TEST_F(Document, SavedAsASceneModelsKeepTheirMaterials) {
    const QString a = PutModel("a.3ds", "red");
    const QString b = PutModel("b.3ds", "green");
    for (const char* name : {"out.zep", "out.zept"}) {
        TDocument document;
        ASSERT_TRUE(document.Open({a, b}, false));
        document.Save(Path(name));
        ASSERT_TRUE(document.Open({Path(name), a}, false));
        EXPECT_EQ(Materials(document), "red green red") << name;
        document.Save(Path("again.zept")); // from scene to scene
        ASSERT_TRUE(document.Open({b, Path("again.zept")}, false));
        EXPECT_EQ(Materials(document), "green red green red") << name;
    }
}

TEST_F(Document, AViewThroughACameraOfTheFileStandsWhereItDoes) {
    const QByteArray cameras = Camera("Left", {-9, 0, 1, 0, 0, 1, 0, 60}) +
                               Camera("Eye", {0, -8, 2, 0, 0, 2, 30, 35}) +
                               Camera("Eye", {5, 5, 5, 0, 0, 0, 0, 45});
    TDocument document;
    ASSERT_TRUE(document.Open({PutModel("a.3ds", "red", cameras)}, false));
    QStringList names;
    for (const TFileCamera& camera : CamerasOf(document.Files())) names << camera.Name;
    EXPECT_EQ(names.join(QLatin1Char(';')), QStringLiteral("Left;Eye;Eye (2)"));
    LookThrough(QStringLiteral("eye"), document);
    const TZEPCamera& view = *document.Camera();
    EXPECT_EQ(view.GetPosition(), (TGLArrayd3{0, -8, 2}));
    EXPECT_EQ(view.GetTarget(), (TGLArrayd3{0, 0, 2}));
    EXPECT_NEAR(view.FocalLength(), 35, 1e-4);
    EXPECT_NEAR(view.RollAngle(), 30, 1e-9);
    EXPECT_GT(view.NearClipPlane(), 0);
    EXPECT_GT(view.FarClipPlane(), 10);
    document.LookFrom(TDirection::Top, 1);
    EXPECT_EQ(view.FocalLength(), 45) << "the lens of the camera stays";
    EXPECT_EQ(view.RollAngle(), 0);
    EXPECT_EQ(ToldOf([&] { LookThrough(QStringLiteral("Right"), document); }),
              Path("a.3ds").toStdString() +
                  ": There is no camera \"Right\": it has Left, Eye, Eye (2).");
}

TEST_F(Document, WhatIsHiddenIsNotFitted) {
    TDocument document;
    const QByteArray far = Pairs({{0, "LINE"}, {8, "q"}, {10, "900"}, {11, "1000"}});
    ASSERT_TRUE(document.Open(
        {Put("a.dxf", Drawing(Layer("p", 1) + Layer("q", 1), LineOn("p") + far))}, false));
    const auto distance = [&] {
        document.FitAll(1);
        return Distance(document.Camera()->GetPosition(), document.Camera()->GetTarget());
    };
    EXPECT_GT(distance(), 300);
    document.Files()[0].Root->GetItem(1)->SetVisible(false);
    EXPECT_LT(distance(), 30);
}

TEST_F(Document, ErrorsNameTheFileOnce) {
    TDocument document;
    const QString model = Put("a.3ds", "text");
    const QString drawing = Put("a.dxf", QByteArray("AutoCAD Binary DXF\r\n\x1a\0", 22));
    EXPECT_EQ(ErrorOf([&] { document.Open({model}, false); }),
              model.toStdString() + ": It is no 3DS model: its main chunk is not there.");
    EXPECT_EQ(ErrorOf([&] { document.Open({drawing}, false); }),
              drawing.toStdString() + ": It is binary DXF, and only its ASCII form can be read.");
}

TEST_F(Document, PlainDrawingsAreReadByTheBareRules) {
    const QString file = Put("a.dxf", Drawing(Layer("p", -1), LineOn("not declared")));
    TDocument document;
    ASSERT_TRUE(document.Open({file}, true));
    const int plain = document.Files()[0].Root->GetItemsCount();
    EXPECT_TRUE(document.Files()[0].Root->GetItem(0)->Visible());
    ASSERT_TRUE(document.Open({file}, false));
    EXPECT_GT(document.Files()[0].Root->GetItemsCount(), plain);
    EXPECT_FALSE(document.Files()[0].Root->GetItem(0)->Visible());
}

} // namespace
} // namespace ZEP
