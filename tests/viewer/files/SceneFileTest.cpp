#include "viewer/files/SceneSaving.h"

#include "tests/FolderTest.h"
#include "viewer/CommandLine.h"
#include "viewer/files/Document.h"
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class SceneFile : public FolderTest {};

const char* const Program = "G21\nG1 X10 F100\nY10\nG3 X0 Y20 R10\n";

TEST_F(SceneFile, AProgramIsSavedAndTheSceneStaysWhatItIsFromFormToForm) {
    const QString program = Put("part.nc", Program);
    SaveScene({program}, false, Path("a.zept"));
    EXPECT_TRUE(Contents("a.zept").startsWith("object TZEPScene\n"));
    EXPECT_TRUE(Contents("a.zept").contains("object TZEPArc\n"));
    SaveScene({Path("a.zept")}, false, Path("b.ZEP"));
    EXPECT_TRUE(Contents("b.ZEP").startsWith("TPF0\x09TZEPScene"));
    SaveScene({Path("b.ZEP")}, false, Path("c.zept"));
    EXPECT_EQ(Contents("c.zept"), Contents("a.zept"));
    const QByteArray named = "object Line7: TZEPLine\n  XForm.Scale.X = 2.0\n  Width = 1.0\n"
                             "  Style = psSolid\nend\n";
    SaveScene({Put("d.zept", named)}, false, Path("e.zept"));
    EXPECT_EQ(Contents("e.zept").toStdString(), named.toStdString());
}

TEST_F(SceneFile, SeveralFilesBecomeOneObjectEach) {
    const QString program = Put("part.nc", Program);
    SaveScene({program}, false, Path("a.zep"));
    SaveScene({program, Path("a.zep")}, false, Path("b.zep"));
    TZEPScene scene;
    scene.LoadFromFile(Path("b.zep"));
    ASSERT_EQ(scene.GetItemsCount(), 2);
    EXPECT_EQ(scene.GetItem(0)->Ident(), QStringLiteral("part.nc"));
    EXPECT_EQ(scene.GetItem(1)->Ident(), QStringLiteral("a.zep"));
    EXPECT_GT(scene.GetItem(0)->GetItemsCount(), 2);
    EXPECT_EQ(scene.GetItem(1)->GetItemsCount(), scene.GetItem(0)->GetItemsCount());
}

TEST_F(SceneFile, PlainProgramsAreReadByTheBareRules) {
    const QString program = Put("cycle.nc", "G21\nG81 X10 Y10 Z-5 R2 F100\nX20\nM30\n");
    SaveScene({program}, false, Path("extended.zept"));
    SaveScene({program}, true, Path("plain.zept"));
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
    try {
        document.Open({broken}, false);
        ADD_FAILURE() << "no error";
    } catch (const Exception& error) {
        EXPECT_EQ(error.Message(), broken + QStringLiteral(": line 3, column 1: expected a "
                                                           "property, object or end, but found the "
                                                           "end"));
    }
    EXPECT_EQ(document.Files().front().Name, Path("a.zept"));
}

TEST_F(SceneFile, SavingTakesNamesThatTellTheForm) {
    const auto parse = [](const QStringList& arguments) {
        return ParseCommandLine(QStringList{QStringLiteral("zepview")} + arguments);
    };
    const auto error = [&](const QStringList& arguments) -> std::string {
        try {
            static_cast<void>(parse(arguments));
        } catch (const Exception& raised) {
            return raised.what();
        }
        return "";
    };
    const QString save = QStringLiteral("--save");
    const TCommandLine line = parse({save, QStringLiteral("o.zept"), QStringLiteral("--plain"),
                                     QStringLiteral("a.nc"), QStringLiteral("b.nc")});
    EXPECT_EQ(line.Task, TCommandLine::TTask::Save);
    EXPECT_EQ(line.SceneFile, QStringLiteral("o.zept"));
    EXPECT_EQ(line.Files.size(), 2);
    EXPECT_TRUE(line.Plain);
    EXPECT_THAT(error({save, QStringLiteral("o.zep"), QStringLiteral("a.nc")}), IsEmpty());
    EXPECT_THAT(error({save, QStringLiteral("o.txt"), QStringLiteral("a.nc")}),
                HasSubstr("ends in .zep or .zept, but found \"o.txt\""));
    EXPECT_THAT(error({save, QStringLiteral("o.zep")}), HasSubstr("one or more files"));
    EXPECT_THAT(
        error({save, QStringLiteral("o.zep"), QStringLiteral("--info"), QStringLiteral("a.nc")}),
        HasSubstr("--info and --save do not go together"));
}

} // namespace
} // namespace ZEP
