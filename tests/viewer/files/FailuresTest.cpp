#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include "tests/ResidentMemory.h"
#include "tests/viewer/SampleFiles.h"
#include "viewer/CommandLine.h"
#include "viewer/files/Document.h"
#include "viewer/files/Picture.h"
#include "viewer/files/Programs.h"
#include <zep/batch/Batch.h>

#include <QDir>
#include <QImage>

#include <gmock/gmock.h>

#include <algorithm>

#include <sys/stat.h>

namespace ZEP {
namespace {

class Failures : public FolderTest {
protected:
    QString PutProgram(const char* name) { return Put(name, "G1 X1\nG1 Y1\n"); }
    QString PutPipe() {
        EXPECT_EQ(mkfifo(QFile::encodeName(Path("pipe.nc")).constData(), 0600), 0);
        return Path("pipe.nc");
    }
    [[nodiscard]] std::string ErrorOfLine(const QStringList& arguments) const {
        return ErrorOf([&] {
            static_cast<void>(ParseCommandLine(QStringList{QStringLiteral("zepview")} + arguments));
        });
    }
};

TEST_F(Failures, OneBadFileAmongSeveralLeavesTheOthers) {
    const QString a = PutProgram("a.nc"), b = PutProgram("b.nc");
    const QString bad = Put("bad.3ds", "text"), none = Path("none.dxf"), pipe = PutPipe();
    TDocument document;
    ASSERT_TRUE(document.Open({bad, a, none, b}, false));
    ASSERT_EQ(document.Files().size(), 2U);
    EXPECT_EQ(document.Files()[1].Name, b);
    ASSERT_EQ(document.Failures().size(), 2U);
    EXPECT_EQ(document.Failures()[0].File, bad);
    EXPECT_THAT(document.Failures()[1].Error.toStdString(), testing::HasSubstr("none.dxf"));
    Put("b.nc", "G1 X1\n");
    ASSERT_TRUE(document.Add({bad, b, pipe}, false));
    EXPECT_EQ(document.Files()[1].Root->GetItemsCount(), 1);
    EXPECT_EQ(document.Failures().size(), 2U);
    EXPECT_THAT(ErrorOf([&] {
                    document.Open({bad, none}, false);
                }),
                testing::AllOf(testing::HasSubstr("bad.3ds: "), testing::HasSubstr("none.dxf: ")));
    EXPECT_EQ(document.Files().size(), 2U);
    EXPECT_EQ(document.Failures().size(), 2U);
    const QString stray = Put("stray.zept", "object TZEPScene\n  A = =\nend\n");
    EXPECT_NE(ErrorOf([&] { document.Open({stray}, false); }), "");
    EXPECT_EQ(document.Failures()[0].Line, 2);
    EXPECT_EQ(document.Failures()[0].Reason, QStringLiteral("Expected a value, but found =."));
}

/// Made ready for a view, as far as `until` of all.
bool IsOpened(TDocument& document, const QString& file, double until, QStringList& told) {
    return document.Open({file}, false, [&](const QString&, double share) {
        told << QString::number(share, 'f', 1);
        return share < until;
    });
}

TEST_F(Failures, TheViewIsMadeReadyWhileOneWaitsAndMayCancel) {
    QByteArray program;
    for (int i = 0; i < 60'000; ++i)
        program += "G1 X" + QByteArray::number(i) + " Y" + QByteArray::number(i % 7) + "\n";
    const QString large = Put("large.nc", program), small = PutProgram("small.nc");
    TDocument document;
    document.SetFirstShown({});
    ASSERT_TRUE(document.Open({small}, false));
    QStringList told;
    ASSERT_TRUE(IsOpened(document, large, 2, told));
    EXPECT_TRUE(std::ranges::is_sorted(told)) << "it goes back";
    for (const char* share : {"0.2", "0.5", "0.7", "0.9", "1.0"})
        EXPECT_TRUE(told.contains(QLatin1String(share))) << share;
    ASSERT_TRUE(document.Open({small}, false));
    const double before = ResidentBytes();
    for (const double until : {0.8, 0.95, 0.5}) {
        EXPECT_FALSE(IsOpened(document, large, until, told));
        EXPECT_EQ(document.Files().front().Name, small);
        if (KeepsFreedMemory) continue;
        EXPECT_LT(ResidentBytes() - before, 4e6) << "kept of what was read until " << until;
    }
}

TEST_F(Failures, WhatIsReadIsNeverWritten) {
    const QString part = PutProgram("part1.nc"), scene = Put("s.zept", "object TZEPScene\nend\n");
    QImage(1, 1, QImage::Format_RGB32).save(Path("p.png"));
    ASSERT_TRUE(QFile::link(Path("p.png"), Path("p.jpg")));
    const QString other = QStringLiteral("other.nc");
    using testing::HasSubstr;
    const QString picture = QStringLiteral("--picture"), save = QStringLiteral("--save");
    EXPECT_THAT(ErrorOfLine({picture, part, other}),
                HasSubstr("a name that ends as a picture does"));
    EXPECT_THAT(ErrorOfLine({picture, Path("p.jpg"), Path("p.png")}), HasSubstr("is to be read"));
    EXPECT_THAT(ErrorOfLine({save, scene, other, scene}), HasSubstr("is to be read"));
    for (const char* name : {"p.png", "p.JPG", "p.bmp", "p"})
        EXPECT_EQ(ErrorOfLine({picture, Path(name), part}), "") << name;
}

TEST_F(Failures, APictureThatCannotBeWrittenLeavesTheOldOne) {
    const QImage picture(4, 4, QImage::Format_RGB32);
    const QString part = PutProgram("part1.nc");
    EXPECT_NE(ErrorOf([&] { WritePicture(picture, part); }), "");
    EXPECT_EQ(Contents("part1.nc"), "G1 X1\nG1 Y1\n");
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), Path("full.png")));
    EXPECT_THAT(ErrorOf([&] { WritePicture(picture, Path("full.png")); }),
                testing::EndsWith("full.png\": No space left on device."));
    WritePicture(picture, Path("bare"));
    EXPECT_TRUE(Contents("bare").startsWith("\x89PNG"));
}

TEST_F(Failures, AProgramBesideASceneIsInItsFolder) {
    QDir(Path("")).mkdir(QStringLiteral("s"));
    PutProgram("out.nc");
    PutProgram("s/in.nc");
    ASSERT_TRUE(QFile::link(QStringLiteral("../out.nc"), Path("s/link.nc")));
    for (const auto& [ident, isFound] :
         {std::pair{"in.nc", true}, {"../out.nc", false}, {"link.nc", false}}) {
        const QString scene =
            Put("s/a.zept", QByteArray("object TZEPBatch\n Ident = '") + ident +
                                "'\n object TZEPLine\n  Ident = 'Line 1'\n end\nend\n");
        TDocument document;
        ASSERT_TRUE(document.Open({scene}, false));
        const std::vector<TProgram> programs = ProgramsOf(document.Files());
        ASSERT_EQ(programs.size(), 1U);
        EXPECT_EQ(!programs[0].Text.isEmpty(), isFound) << ident;
    }
}

} // namespace
} // namespace ZEP
