#include "tests/converters/rs274d/RS274DFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <gmock/gmock.h>

#include <clocale>

#include <sys/stat.h>

namespace ZEP {
namespace {

using testing::ElementsAre;

TEST_F(RS274D, RefusesWhatItCanNotDo) {
    Converter.SetRoot(nullptr);
    EXPECT_EQ(ErrorOfLoading(), "TRS274DConverter.LoadFromFile: Can't load into Root=nil.");
    Converter.SetRoot(&Root);
    EXPECT_EQ(ErrorOfLoading(), "TRS274DConverter.LoadFromFile: No file name defined.");
    EXPECT_THROW(
        {
            try {
                Converter.SaveToFile();
            } catch (const Exception& error) {
                EXPECT_STREQ(error.what(),
                             "TRS274DConverter.SaveToFile: Only import is supported.");
                throw;
            }
        },
        Exception);
}

TEST_F(RS274D, TellsWhyAFileCanNotBeRead) {
    const QString pipe = Folder.filePath(QStringLiteral("pipe.nc"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString loop = Folder.filePath(QStringLiteral("loop.nc"));
    ASSERT_TRUE(QFile::link(loop, loop));
    const struct {
        QString Name;
        const char* Reason;
    } rows[] = {
        {Folder.filePath(QStringLiteral("none.nc")), "no such file"},
        {QString(5000, u'x'), "no such file"},
        {loop, "no such file"},
        {Folder.path(), "not a file"},
        {pipe, "not a file"},
        {QStringLiteral("/dev/zero"), "not a file"},
    };
    for (const auto& row : rows) {
        Converter.SetFileName(row.Name);
        EXPECT_EQ(ErrorOfLoading(), "TRS274DConverter.LoadFromFile: Can't read \"" +
                                        row.Name.toStdString() + "\": " + row.Reason + ".");
    }
}

TEST_F(RS274D, TellsThatAFileIsNotOurs) {
    const QString name = Written(QStringLiteral("secret.nc"), "G1X1");
    ASSERT_TRUE(QFile::setPermissions(name, {}));
    if (QFileInfo(name).isReadable()) GTEST_SKIP() << "this user may read everything";
    Converter.SetFileName(name);
    EXPECT_THAT(ErrorOfLoading(), testing::HasSubstr("secret.nc\": Permission denied"));
}

TEST_F(RS274D, ClearsTheRootOnlyWhenAskedTo) {
    Converter.SetFileName(Written(QStringLiteral("a.nc"), "G1X1"));
    Converter.LoadFromFile();
    Converter.LoadFromFile();
    EXPECT_EQ(Root.GetItemsCount(), 1);
    Converter.SetClearBeforRead(false);
    Converter.LoadFromFile();
    EXPECT_EQ(Root.GetItemsCount(), 2);
    Converter.SetFileName(Written(QStringLiteral("empty.nc"), ""));
    Converter.SetClearBeforRead(true);
    Converter.LoadFromFile();
    EXPECT_EQ(Root.GetItemsCount(), 0);
}

TEST_F(RS274D, KeepsWhatWasReadBeforeAnError) {
    Converter.SetFileName(Written(QStringLiteral("a.nc"), "G1X1\nX2L99999\nX3"));
    EXPECT_EQ(ErrorOfLoading(), "Repeat count 99999 is larger than 9999. Line: 2");
    EXPECT_EQ(Root.GetItemsCount(), 1);
    EXPECT_EQ(Root.UpdateLevel(), 0);
    Converter.SetStopOnErrors(true);
    Converter.SetFileName(Written(QStringLiteral("b.nc"), "G0X1\nG2X9R1\nG1X1"));
    EXPECT_EQ(ErrorOfLoading(), "Cannot reach destination with specified radius. Line: 2");
    EXPECT_EQ(Root.GetItemsCount(), 1);
    Converter.SetStopOnErrors(false);
    EXPECT_EQ(ErrorOfLoading(), "");
    EXPECT_EQ(Root.GetItemsCount(), 3);
}

TEST_F(RS274D, AFileThatCanNotBeReadLeavesWhatClearBeforReadSays) {
    for (const bool clear : {false, true}) {
        Read("G1X1");
        Converter.SetClearBeforRead(clear);
        Converter.SetFileName(Folder.filePath(QStringLiteral("none.nc")));
        EXPECT_NE(ErrorOfLoading(), "");
        EXPECT_EQ(Root.GetItemsCount(), clear ? 0 : 1);
        EXPECT_EQ(Root.UpdateLevel(), 0);
    }
}

TEST_F(RS274D, ReadingEndsWhenTheHostSaysSoOrFreesTheRoot) {
    std::string program = "G1";
    while (program.size() < 300'000) program += "X1\nX2\n";
    Converter.SetProgress([](qint64 done, qint64) { return done < 100'000; });
    Converter.ReadNC(program);
    EXPECT_TRUE(Converter.Cancelled());
    EXPECT_GT(Root.GetItemsCount(), 0);
    auto* root = new TZEPObject(&Scene);
    Converter.SetRoot(root);
    Converter.SetProgress([root](qint64, qint64) {
        delete root;
        return true;
    });
    Converter.ReadNC(program);
    EXPECT_TRUE(Converter.Cancelled());
    Converter.SetRoot(&Root);
    Converter.SetProgress({});
    Converter.ReadNC("G1X1");
    EXPECT_FALSE(Converter.Cancelled());
}

TEST_F(RS274D, AnErrorOfTheHostEndsTheReadingOnly) {
    std::string program = "G1";
    while (program.size() < 300'000) program += "X1\nX2\n";
    Converter.SetProgress(
        [](qint64, qint64) -> bool { throw Exception(QStringLiteral("window closed")); });
    EXPECT_THROW(Converter.ReadNC(program), Exception);
    EXPECT_EQ(Root.UpdateLevel(), 0);
    const int kept = Root.GetItemsCount();
    EXPECT_GT(kept, 0);
    Converter.SetProgress({});
    Converter.ReadNC("G1X1");
    EXPECT_EQ(Root.GetItemsCount(), kept + 1);
}

/// The same in every locale, the trace too.
class RS274DTrace : public RS274D, public testing::WithParamInterface<const char*> {
protected:
    RS274DTrace() {
        QLocale::setDefault(QLocale(QLatin1String(GetParam())));
        // Where the system has it; where it has not, nothing changes.
        std::setlocale(LC_ALL, (std::string(GetParam()) + ".UTF-8").c_str());
    }
    ~RS274DTrace() override {
        QLocale::setDefault(QLocale::c());
        std::setlocale(LC_ALL, "C");
    }
};

TEST_P(RS274DTrace, StandsBesideTheProgram) {
    const QString program = Written(QStringLiteral("path.v1.nc"), Content(Data("crcrlf.nc")));
    Converter.SetFileName(program);
    Converter.SetDoDump(true);
    Converter.LoadFromFile();
    EXPECT_THAT(Objects(), ElementsAre("TZEPLine 0 0 0 > 1 0 0 style2 808080 @Line 1",
                                       "TZEPLine 1 0 0 > 1 0.5 0 ffffff @Line 2",
                                       "TZEPLine 1 0.5 0 > 1 0.5 0 ffffff @Line 2"));
    EXPECT_EQ(Content(Folder.filePath(QStringLiteral("path.v1.dmp"))).toStdString(),
              "quick move\r\n"
              "X=1.000000, Y=0.000000, Z=0.000000\r\n"
              "linear interpolation\r\n"
              "X=1.000000, Y=0.500000, Z=0.000000\r\n"
              "X=1.000000, Y=0.500000, Z=0.000000\r\n"
              "skip word (G40)\r\n"
              "next tool\r\n");
    Converter.Dump("after the reading");
}

INSTANTIATE_TEST_SUITE_P(Locales, RS274DTrace, testing::Values("C", "de_DE"));

TEST_F(RS274D, TheTraceNeverReplacesTheProgram) {
    Converter.SetDoDump(true);
    Converter.SetFileName(Written(QStringLiteral("a.dmp"), "G1X1"));
    EXPECT_THAT(ErrorOfLoading(), testing::HasSubstr("it is the file to read"));
    EXPECT_EQ(Content(Converter.FileName()), "G1X1");
    Converter.SetFileName(Written(QStringLiteral("noextension"), "G1X1"));
    EXPECT_EQ(ErrorOfLoading(), "");
    EXPECT_TRUE(QFile::exists(Folder.filePath(QStringLiteral("noextension.dmp"))));
    EXPECT_TRUE(QDir(Folder.path()).mkpath(QStringLiteral("b.dmp")));
    Converter.SetFileName(Written(QStringLiteral("b.nc"), "G1X1"));
    EXPECT_THAT(ErrorOfLoading(), testing::StartsWith("TRS274DConverter.Dump: Can't write \""));
}

TEST_F(RS274D, ATraceThatCanNotBeWrittenIsAnError) {
    Converter.SetDoDump(true);
    Converter.SetFileName(Written(QStringLiteral("full.nc"), "G1X1\nX2"));
    const QString trace = Folder.filePath(QStringLiteral("full.dmp"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), trace));
    EXPECT_THAT(ErrorOfLoading(), testing::StartsWith("TRS274DConverter.Dump: Can't write \"" +
                                                      trace.toStdString() + "\": "));
    EXPECT_EQ(Root.GetItemsCount(), 2) << "the path was read";
    // One that can not even be made leaves the scene as it was.
    Converter.SetFileName(QStringLiteral("/nowhere/a.nc"));
    EXPECT_THAT(ErrorOfLoading(), testing::StartsWith("TRS274DConverter.Dump: Can't write \""));
    EXPECT_EQ(Root.GetItemsCount(), 2);
    Converter.SetDoDump(false);
    Converter.ReadNC("G1X1");
    EXPECT_EQ(Root.GetItemsCount(), 3);
}

} // namespace
} // namespace ZEP
