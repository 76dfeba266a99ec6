#include "tests/FolderTest.h"

#include <gmock/gmock.h>

#include <QProcess>

namespace ZEP {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct TResult {
    int Code;
    std::string Output, Errors;
};

TResult RunZepstream(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(ZEP_PROGRAMS "/zepstream"), arguments);
    if (!process.waitForFinished()) return {-1, "", "does not end"};
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

class Zepstream : public FolderTest {};

const QByteArray Stranger = "object A: TNobodyKnows\n  B.C = 1.5\n  object TNorThis\n  end\nend\n";

TEST_F(Zepstream, ConvertsClassesThatNobodyKnows) {
    const QString text = Put("a.zept", Stranger);
    EXPECT_EQ(RunZepstream({QStringLiteral("to-binary"), text, Path("a.zep")}).Code, 0);
    EXPECT_THAT(Contents("a.zep").toStdString(), StartsWith("TPF0\x0CTNobodyKnows\1A\3B.C\5"));
    EXPECT_EQ(RunZepstream({QStringLiteral("to-text"), Path("a.zep"), Path("b.zept")}).Code, 0);
    EXPECT_EQ(Contents("b.zept"), Stranger);
    const TResult result = RunZepstream({QStringLiteral("check"), Path("a.zep")});
    EXPECT_EQ(result.Code, 0);
    EXPECT_THAT(result.Output, HasSubstr("a.zep: binary, 2 components, 1 properties\n"));
}

TEST_F(Zepstream, TellsWhereAFileIsBrokenAndWritesNothing) {
    Put("old.zep", "old");
    const QString cut = Put("cut.zept", Stranger.chopped(4));
    const QString line = QStringLiteral("%1: line 5, column 1: expected object or end, but found "
                                        "the end\n")
                             .arg(cut);
    for (const QStringList& task : {QStringList{QStringLiteral("check"), cut},
                                    {QStringLiteral("to-binary"), cut, Path("old.zep")}}) {
        const TResult result = RunZepstream(task);
        EXPECT_EQ(result.Code, 1);
        EXPECT_EQ(result.Errors, "zepstream: " + line.toStdString());
    }
    EXPECT_EQ(Contents("old.zep"), "old");
    const TResult longer =
        RunZepstream({QStringLiteral("check"), Put("long.zept", Stranger + "object")});
    EXPECT_THAT(longer.Errors, HasSubstr("line 6, column 1: expected the end of the stream"));
    const TResult other = RunZepstream({QStringLiteral("check"), Put("other.nc", "G0 X1")});
    EXPECT_EQ(other.Code, 1);
    EXPECT_THAT(other.Errors, HasSubstr("other.nc: expected a component stream"));
}

TEST_F(Zepstream, SaysHowItIsUsed) {
    for (const QStringList& wrong : {QStringList{},
                                     {QStringLiteral("check")},
                                     {QStringLiteral("to-text"), Path("a")},
                                     {QStringLiteral("nonsense"), Path("a")}}) {
        const TResult result = RunZepstream(wrong);
        EXPECT_EQ(result.Code, 2);
        EXPECT_THAT(result.Errors, StartsWith("Usage: zepstream"));
    }
    EXPECT_EQ(RunZepstream({QStringLiteral("--help")}).Code, 0);
}

} // namespace
} // namespace ZEP
