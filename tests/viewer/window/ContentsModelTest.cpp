#include "viewer/window/ContentsModel.h"

#include "tests/FolderTest.h"
#include "tests/viewer/SampleFiles.h"
#include "viewer/files/Document.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/batch/Batch.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Scene.h>

#include <gmock/gmock.h>

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

} // namespace
} // namespace ZEP
