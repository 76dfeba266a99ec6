#pragma once

#include <zep/objects/Line.h>
#include <zep/scene/Scene.h>
#include <zep/widgets/SceneModel.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <optional>

namespace ZEP {

inline TZEPObject* Add(TZEPObject& parent, const QString& ident = {}, bool last = true) {
    auto* object = new TZEPLine(&parent);
    object->SetIdent(ident);
    object->SetParentComponentExt(&parent, last);
    return object;
}

/// "x" for what is seen whole, "-" in part, "." not at all.
inline char BoxOf(const TZEPObject& object) {
    for (const TZEPObject* above = &object; above->Parent(); above = above->Parent())
        if (!above->Visible()) return '.';
    std::string boxes;
    for (int i = 0; i < object.GetItemsCount(); ++i) boxes += BoxOf(*object.GetItem(i));
    if (boxes.empty() || boxes.find_first_not_of('x') == std::string::npos) return 'x';
    return boxes.find_first_not_of('.') == std::string::npos ? '.' : '-';
}

/// Each row is what the tree has in its place; `model` may be a proxy.
inline void ExpectRows(const QAbstractItemModel& model, const QModelIndex& index,
                       const TZEPObject& object) {
    ASSERT_EQ(model.rowCount(index), object.GetItemsCount()) << qPrintable(object.Ident());
    for (int i = 0; i < object.GetItemsCount(); ++i) {
        const TZEPObject& child = *object.GetItem(i);
        const QModelIndex row = model.index(i, 0, index);
        ASSERT_EQ(row.data().toString(),
                  child.Ident().isEmpty() ? QStringLiteral("Line") : child.Ident());
        ASSERT_EQ(".-x"[row.data(Qt::CheckStateRole).toInt()], BoxOf(child)) << i;
        ASSERT_EQ(row.parent(), index);
        ASSERT_NO_FATAL_FAILURE(ExpectRows(model, row, child));
    }
}

class SceneModelTest : public testing::Test {
protected:
    SceneModelTest() { m_model.SetRoot(&*m_scene); }
    static void Settle() { QCoreApplication::sendPostedEvents(); }
    void ExpectInStep() {
        Settle();
        ASSERT_NO_FATAL_FAILURE(ExpectRows(m_model, {}, *m_scene));
    }

    std::optional<TZEPScene> m_scene{std::in_place};
    TZEPSceneModel m_model;
};

} // namespace ZEP
