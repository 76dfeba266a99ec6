#include "viewer/window/SourceModel.h"
#include "viewer/content/ProgramMoves.h"

#include <zep/scene/Object.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(SourceModel, LinesAreThoseThatTheReaderCounts) {
    struct TRow {
        QByteArray Text;
        QStringList Lines;
    };
    const TRow rows[] = {
        {"", {}},
        {"a", {"a"}},
        {"a\n\nb\n", {"a", "", "b"}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\r\r\nb\rc", {"a", "b", "c"}},
        {"\xEF\xBB\xBFx\n\xC3\xA9\n", {"x", QString(QChar(0xE9))}},
    };
    for (const TRow& row : rows) {
        SCOPED_TRACE(row.Text.constData());
        TSourceModel model;
        model.SetText(row.Text);
        ASSERT_EQ(model.rowCount(), row.Lines.size());
        for (int i = 0; i < model.rowCount(); ++i) EXPECT_EQ(model.Line(i), row.Lines[i]) << i;
        EXPECT_EQ(model.Line(model.rowCount()), QString());
        EXPECT_EQ(model.Line(-1), QString());
    }
}

TEST(SourceModel, AnEndlessLineIsCut) {
    TSourceModel model;
    model.SetText(QByteArray(5'000'000, 'x'));
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_LT(model.Line(0).size(), 1000);
}

TEST(ProgramMoves, FindTheFirstMoveOfALine) {
    TZEPObject root;
    // A subprogram on the lines 7 and 8 runs twice; its second run comes after line 3.
    for (const int line : {2, 7, 8, 3, 3, 7, 8}) {
        auto* object = new TZEPObject(&root);
        object->SetIdent(QStringLiteral("Line %1").arg(line));
        object->SetParentComponent(&root);
    }
    const TProgramMoves moves(root);
    struct TRow {
        int Line;
        std::optional<int> Item;
    };
    for (const TRow& row :
         {TRow{1, {}}, {2, 0}, {3, 3}, {4, {}}, {7, 1}, {8, 2}, {9, {}}, {-1, {}}})
        EXPECT_EQ(moves.ItemOf(row.Line), row.Item) << row.Line;
}

} // namespace
} // namespace ZEP
