#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include "viewer/files/Document.h"
#include <zep/batch/Batch.h>
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using testing::HasSubstr;

class SceneFile : public FolderTest {
protected:
    void Save(const QStringList& files, const char* name, bool plain = false) {
        TDocument document;
        ASSERT_TRUE(document.Open(files, plain));
        document.Save(Path(name));
    }
};

const char* const Program = "G21\nG1 X10 F100\nY10\nG3 X0 Y20 R10\n";

TEST_F(SceneFile, AProgramIsSavedAndTheSceneStaysWhatItIsFromFormToForm) {
    const QString program = Put("part.nc", Program);
    Save({program}, "a.zept");
    EXPECT_TRUE(Contents("a.zept").startsWith("object TZEPScene\n"));
    EXPECT_TRUE(Contents("a.zept").contains("    object TZEPArc\n"));
    Save({Path("a.zept")}, "b.ZEP");
    EXPECT_TRUE(Contents("b.ZEP").startsWith("TPF0\x09TZEPScene"));
    Save({Path("b.ZEP")}, "c.zept");
    EXPECT_EQ(Contents("c.zept"), Contents("a.zept"));
    const QByteArray named = "object Line7: TZEPLine\n  XForm.Scale.X = 2.0\n  Width = 1.0\n"
                             "  Style = psSolid\nend\n";
    Save({Put("d.zept", named)}, "e.zept");
    EXPECT_EQ(Contents("e.zept").toStdString(), named.toStdString());
}

TEST_F(SceneFile, SeveralFilesBecomeOneObjectEach) {
    const QString program = Put("part.nc", Program);
    Save({program}, "a.zep");
    Save({program, Path("a.zep")}, "b.zep");
    TZEPScene scene;
    scene.LoadFromFile(Path("b.zep"));
    ASSERT_EQ(scene.GetItemsCount(), 2);
    EXPECT_EQ(scene.GetItem(0)->Ident(), QStringLiteral("part.nc"));
    EXPECT_EQ(scene.GetItem(1)->Ident(), QStringLiteral("part.nc")) << "what it was made of";
    EXPECT_GT(scene.GetItem(0)->GetItemsCount(), 2);
    EXPECT_EQ(scene.GetItem(1)->GetItemsCount(), scene.GetItem(0)->GetItemsCount());
}

TEST_F(SceneFile, ASceneKeepsItsOwnPropertiesAndEveryObjectItsName) {
    const QByteArray scene = "object S: TZEPScene\n  SceneAmbientColor = 255\n"
                             "  MaterialLibrary = Lib\n  Animation = True\n"
                             "  object Lib: TZEPMaterialLibrary\n    Materials = <\n      item\n"
                             "      end>\n  end\n  object L: TZEPLine\n  end\nend\n";
    const QString name = Put("s.zept", scene);
    Save({name}, "a.zept");
    for (const char* kept :
         {"object S: TZEPScene\n", "  SceneAmbientColor = 255\n", "  MaterialLibrary = Lib\n",
          "  Animation = True\n", "  object Lib: TZEPMaterialLibrary\n", "  object L: TZEPLine\n"})
        EXPECT_TRUE(Contents("a.zept").contains(kept)) << kept;
    Save({name, Put("t.zept", "object L: TZEPLine\nend\n"), name}, "b.zept");
    for (const char* object :
         {"    object L: TZEPLine\n", "    object L_2: TZEPLine\n", "    object L_3: TZEPLine\n"})
        EXPECT_TRUE(Contents("b.zept").contains(object)) << object;
    for (const char* file : {"a.zept", "b.zept"}) {
        TDocument document;
        ASSERT_TRUE(document.Open({Path(file)}, false));
        EXPECT_TRUE(document.Files()[0].Messages.empty()) << file;
        document.Save(Path("again.zept"));
        EXPECT_EQ(Contents("again.zept"), Contents(file)) << file;
    }
}

TEST_F(SceneFile, WhatIsShownIsNotSavedOverItsProgram) {
    const QByteArray program = "G21\nG1 X10\n";
    const QString file = Put("program.zep", program); // told by its content
    ASSERT_TRUE(QFile::link(file, Path("link.zep")));
    TDocument document;
    ASSERT_TRUE(document.Open({file}, false));
    EXPECT_EQ(document.Files()[0].Format, TFileFormat::RS274D);
    for (const char* name : {"program.zep", "link.zep"})
        EXPECT_THAT(ErrorOf([&] { document.Save(Path(name)); }), HasSubstr("would be lost"));
    EXPECT_EQ(Contents("program.zep"), program);
    document.Save(Path("scene.zept"));
    ASSERT_TRUE(document.Open({Path("scene.zept")}, false));
    document.Files()[0].Root->SetVisible(false);
    document.Save(Path("scene.zept"));
    EXPECT_EQ(document.Files()[0].State, TFileState::Of(Path("scene.zept"))) << "read again";
    EXPECT_TRUE(Contents("scene.zept").contains("    Visible = False\n"));
}

TEST_F(SceneFile, PlainProgramsAreReadByTheBareRules) {
    const QString program = Put("cycle.nc", "G21\nG81 X10 Y10 Z-5 R2 F100\nX20\nM30\n");
    Save({program}, "extended.zept");
    Save({program}, "plain.zept", true);
    EXPECT_NE(Contents("plain.zept"), Contents("extended.zept"));
}

TEST_F(SceneFile, ADocumentShowsWhatStandsInASceneWhateverItsName) {
    const QString name = Put("scene.txt", "object S: TZEPScene\n"
                                          "  XForm.Scale.X = 2.0\n"
                                          "  XForm.Scale.Y = 1.0\n"
                                          "  XForm.Scale.Z = 1.0\n"
                                          "  ManualUpdate = True\n"
                                          "  object TZEPCamera\n  end\n"
                                          "  object TZEPLine\n"
                                          "    NoSuch = 5\n"
                                          "    XForm.Scale.X = 1.0\n"
                                          "    XForm.Scale.Y = 1.0\n"
                                          "    XForm.Scale.Z = 1.0\n"
                                          "    P2.X = 10\n"
                                          "    Width = 3.0\n"
                                          "  end\n"
                                          "end\n");
    TDocument document;
    ASSERT_TRUE(document.Open({name}, false));
    const TOpenedFile& file = document.Files().front();
    EXPECT_EQ(file.Format, TFileFormat::Scene);
    ASSERT_EQ(file.Messages.size(), 1U);
    EXPECT_EQ(file.Messages[0].Count, 1);
    EXPECT_EQ(file.Messages[0].FirstLine, 9);
    ASSERT_TRUE(document.Bounds());
    EXPECT_EQ(document.Bounds()->Max, (TGLArrayd3{20, 0, 0})) << "the camera draws nothing";
    EXPECT_EQ(document.Bounds()->Min, zero3d);
}

TEST_F(SceneFile, WhatIsBrokenIsNamedAndWhatWasShownStays) {
    TDocument document;
    ASSERT_TRUE(document.Open({Put("a.zept", "object TZEPLine end")}, false));
    const QString broken = Put("b.zept", "object TZEPScene\n  object TZEPLine\n");
    EXPECT_EQ(ErrorOf([&] { document.Open({broken}, false); }),
              broken.toStdString() + ", line 3, column 1: Expected a property, object or end, but "
                                     "found the end.");
    EXPECT_EQ(document.Files().front().Name, Path("a.zept"));
}

} // namespace
} // namespace ZEP
