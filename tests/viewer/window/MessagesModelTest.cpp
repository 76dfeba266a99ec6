#include "viewer/window/MessagesModel.h"

#include "tests/FolderTest.h"
#include "tests/viewer/SampleFiles.h"
#include "viewer/files/Document.h"

#include <gtest/gtest.h>

namespace ZEP {
namespace {

using namespace Sample;

class MessagesModel : public FolderTest {
protected:
    static QString TextOf(const TMessagesModel& model) {
        QModelIndexList rows;
        for (int i = 0; i < model.rowCount(); ++i) rows << model.index(i, 0);
        return model.ToText(rows);
    }
};

TEST_F(MessagesModel, TellsWhatWasPassedOverByFileKindCountAndLine) {
    TDocument document;
    const TMessagesModel model(document);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.Summary(), QString());
    const QByteArray hatch = Pairs({{0, "HATCH"}, {8, "p"}});
    ASSERT_TRUE(document.Open(
        {Put("a.dxf", Drawing(Layer("p", 1), hatch + hatch)), Put("b.nc", "G1 X1\nG1 X[2+3]\n")},
        true));
    EXPECT_EQ(TextOf(model).toStdString(),
              "a.dxf: HATCH: 2 not drawn, first in line 25\n"
              "b.nc: blocks with expressions: 1 passed over, first in line 2\n");
    EXPECT_EQ(model.Summary(), QStringLiteral("2 kinds passed over"));
    document.Close(Path("a.dxf"));
    EXPECT_EQ(model.Summary(), QStringLiteral("1 kind passed over"));
}

TEST_F(MessagesModel, ANoteStandsFirstUntilFilesChange) {
    TDocument document;
    TMessagesModel model(document);
    const QString file = Put("b.nc", "G1 X[2+3]\n");
    ASSERT_TRUE(document.Open({file}, true));
    model.SetNote(file, QStringLiteral("cannot be read"));
    model.SetNote(file, QStringLiteral("still cannot be read"));
    EXPECT_TRUE(TextOf(model).startsWith(QStringLiteral("b.nc: still cannot be read\nb.nc: ")));
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.Summary(), QStringLiteral("1 file is not up to date, 1 kind passed over"));
    ASSERT_TRUE(document.Add({file}, true));
    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(MessagesModel, CountsReadAsSentences) {
    struct TRow {
        TFileFormat Format;
        const char* Kind;
        const char* Text;
    };
    const TRow rows[] = {
        {TFileFormat::DXF, "LWPOLYLINE", "LWPOLYLINE: 312 not drawn"},
        {TFileFormat::DXF, "other kinds", "other kinds: 312 passed over"},
        {TFileFormat::RS274D, "code G68", "code G68: 312 passed over"},
        {TFileFormat::F3DS, "faces without a material", "faces without a material: 312"},
    };
    for (const TRow& row : rows)
        EXPECT_EQ(MessageText(row.Format, {QLatin1String(row.Kind), 312, 0}),
                  QLatin1String(row.Text));
}

} // namespace
} // namespace ZEP
