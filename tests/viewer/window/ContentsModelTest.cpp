#include "viewer/window/ContentsModel.h"

#include "tests/FolderTest.h"
#include "tests/viewer/SampleFiles.h"
#include "viewer/files/Document.h"
#include "viewer/window/MessagesModel.h"
#include <zep/batch/Batch.h>
#include <zep/scene/Scene.h>

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

namespace ZEP {
namespace {

using namespace Sample;

class ContentsModel : public FolderTest {
protected:
    QString PutDrawing(const char* name) {
        return Put(name, Drawing(Layer("walls", 1) + Layer("doors", -3),
                                 LineOn("walls") + LineOn("doors") + LineOn("walls")));
    }
    QString PutModel(const char* name) {
        return Put(name, Model(Material("steel", 200) + Mesh("Wheel", "steel") + Mesh("Axle", "") +
                               Camera("Eye", {9, 0, 0, 0, 0, 0, 0, 50})));
    }

    /// Names of the rows, indented, with "." before those that are not seen and "-" before those
    /// that are seen in part.
    static QString Rows(const QAbstractItemModel& model, const QModelIndex& parent = {},
                        const QString& indent = {}) {
        QString rows;
        for (int i = 0; i < model.rowCount(parent); ++i) {
            const QModelIndex index = model.index(i, 0, parent);
            const QVariant box = index.data(Qt::CheckStateRole);
            const char* mark = box.toInt() == Qt::Checked || box.isNull() ? ""
                               : box.toInt() == Qt::Unchecked             ? "."
                                                                          : "-";
            rows += indent + QLatin1String(mark) + index.data().toString() + QLatin1Char('\n');
            rows += Rows(model, index, indent + QLatin1Char(' '));
        }
        return rows;
    }
};

TEST_F(ContentsModel, ShowsFilesLayersObjectsAndWhatIsSwitchedOff) {
    TDocument document;
    TContentsModel model(document);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model.rowCount(), 0);
    ASSERT_TRUE(document.Open({PutDrawing("a.dxf"), PutModel("b.3ds")}, false));
    EXPECT_EQ(Rows(model).toStdString(), "-a.dxf\n walls\n  Line\n  Line\n .doors\n  .Line\n"
                                         "b.3ds\n Wheel\n Axle\n Eye\n");
    const QModelIndex walls = model.index(0, 0, model.index(0, 0));
    EXPECT_EQ(walls.siblingAtColumn(TContentsModel::CountColumn).data(), QStringLiteral("2"));
    EXPECT_EQ(walls.data(Qt::ToolTipRole), QStringLiteral("Layer \"walls\": 2 objects"));
    const QModelIndex wheel = model.index(0, 0, model.index(1, 0));
    EXPECT_EQ(wheel.data(Qt::ToolTipRole), QStringLiteral("Mesh \"Wheel\": 1 face, 3 vertices"));
    EXPECT_TRUE(model.index(0, 0).data(Qt::ToolTipRole).toString().startsWith(Path("a.dxf")));
    EXPECT_FALSE(model.IndexOf(*document.Camera()).isValid());
    EXPECT_EQ(model.FileOf(wheel), Path("b.3ds"));
    document.Close(Path("a.dxf"));
    EXPECT_EQ(Rows(model).toStdString(), "b.3ds\n Wheel\n Axle\n Eye\n");
}

TEST_F(ContentsModel, ASearchLeavesWhatItFindsAndWhatLeadsThere) {
    TDocument document;
    TContentsModel model(document);
    ASSERT_TRUE(document.Open({PutDrawing("a.dxf"), PutModel("b.3ds")}, false));
    struct TRow {
        const char* Text;
        qint64 Found;
        const char* Rows;
    };
    const TRow rows[] = {
        {"WHEEL", 1, "b.3ds\n Wheel\n"},
        {"door", 1, "-a.dxf\n .doors\n  .Line\n"},
        {"mesh", 2, "b.3ds\n Wheel\n Axle\n"},
        {"line", 3, "-a.dxf\n walls\n  Line\n  Line\n .doors\n  .Line\n"},
        {"nothing such", 0, ""},
    };
    for (const TRow& row : rows) {
        model.Search(QLatin1String(row.Text));
        EXPECT_EQ(Rows(model).toStdString(), row.Rows) << row.Text;
        EXPECT_EQ(model.Found(), row.Found) << row.Text;
    }
    TZEPObject& wheel = *document.Files()[1].Root->GetItem(0);
    EXPECT_FALSE(model.IndexOf(wheel).isValid());
    model.Search({});
    EXPECT_EQ(model.IndexOf(wheel).row(), 0);
}

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
              "a.dxf, line 25: HATCH: 2 not drawn\n"
              "b.nc, line 2: blocks with expressions: 1 passed over\n");
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
    model.SetNote(file, QStringLiteral("still cannot be read"), 7);
    EXPECT_TRUE(
        TextOf(model).startsWith(QStringLiteral("b.nc, line 7: still cannot be read\nb.nc, ")));
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.Summary(), QStringLiteral("1 file is not up to date, 1 kind passed over"));
    ASSERT_TRUE(document.Add({file}, true));
    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(MessagesModel, TellsWhetherThePictureIsAsTheFileHasIt) {
    const struct {
        const char* Program;
        bool Changes;
    } rows[] = {
        {"/G1 X1\nG1 X2\n", false},     {"G1 X1\nG43 H1\nM99\n", false},  {"G1 X1 A5\n", true},
        {"G1 X1\nG3 X9 Y9 R1\n", true}, {"G1 X[#100+1]\n/G1 X1\n", true}, {"G1 X1\nM77\n", false},
    };
    for (const auto& row : rows) {
        TDocument document;
        const TMessagesModel model(document);
        ASSERT_TRUE(document.Open({Put("b.nc", row.Program)}, false));
        EXPECT_NE(model.Summary(), QString()) << row.Program;
        EXPECT_EQ(model.ChangesPicture(), row.Changes) << row.Program;
    }
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
