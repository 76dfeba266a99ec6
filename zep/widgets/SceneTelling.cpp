#include <zep/widgets/SceneSync.h>

#include <zep/scene/Object.h>

#include <QPointer>

#include <utility>

namespace ZEP {

/// \return false when the rows were lost meanwhile, or the model itself
bool TZEPSceneSync::Emit(const std::function<void()>& emission) {
    const QPointer<QAbstractItemModel> alive(&m_model);
    ++m_emitting;
    emission();
    if (!alive) return false;
    if (--m_emitting > 0) return !m_rows.IsLost();
    if (std::exchange(m_resetDue, false)) {
        return Emit([this] {
            BeginReset();
            EndReset();
        });
    }
    const bool hasNews = m_rows.IsLost() || m_rows.HoldingBack() || !m_marked.empty();
    if (hasNews || m_allMarked) Schedule();
    return !m_rows.IsLost();
}

void TZEPSceneSync::Schedule() {
    if (std::exchange(m_scheduled, true)) return;
    QMetaObject::invokeMethod(
        &m_model,
        [this] {
            m_scheduled = false;
            Tick();
        },
        Qt::QueuedConnection);
}

void TZEPSceneSync::Tick() {
    m_removed = 0;
    if (IsEmitting()) return;
    if (m_rows.IsLost()) return Recover();
    Sync();
}

void TZEPSceneSync::Sync() {
    if (IsEmitting() || m_rows.IsLost()) return;
    if (PresentHeldBack()) Tell();
}

bool TZEPSceneSync::PresentHeldBack() {
    while (const TZEPObject* parent = m_rows.HoldingBack()) {
        const int first = m_rows.Count(parent);
        const int count = m_rows.Available(*parent); // a slot may append more
        const bool told = Emit([&] {
            BeginInsert(Place(*parent), first, count - 1);
            if (!m_rows.IsLost()) m_rows.Present(*parent, count);
            EndInsert();
        });
        if (!told) return false;
    }
    return true;
}

/// Calls `tell`, which emits, for each of `m_telling`. What slots free is told no more.
/// \param tell  false: the rows are lost
void TZEPSceneSync::TellEach(const std::function<bool(const TZEPObject&)>& tell) {
    while (!m_telling.empty())
        if (!tell(*m_telling.extract(m_telling.begin()).value())) return;
}

void TZEPSceneSync::Tell() {
    if (std::exchange(m_allMarked, false)) return TellAll();
    for (const TZEPObject* row : std::exchange(m_marked, {}))
        while (row && m_telling.insert(row).second) row = row->Parent();
    TellEach([this](const TZEPObject& row) {
        if (!m_rows.Has(row)) return true;
        const QModelIndex index = Find(row);
        const QModelIndex last = index.siblingAtColumn(m_model.columnCount() - 1);
        return Emit([&] { Q_EMIT m_model.dataChanged(index, last); });
    });
}

void TZEPSceneSync::TellAll() {
    if (m_looked.size() > MostTold) {
        Emit([&] {
            Q_EMIT m_model.layoutAboutToBeChanged();
            Q_EMIT m_model.layoutChanged();
        });
        return;
    }
    m_telling = m_looked; // slots may free some of it as the top level is told
    if (!TellRows({})) return;
    TellEach([this](const TZEPObject& parent) {
        return !m_rows.ShowsBelow(parent) || TellRows(Place(parent));
    });
}

bool TZEPSceneSync::TellRows(const QModelIndex& parent) {
    const int count = m_model.rowCount(parent);
    if (count == 0) return true;
    const QModelIndex first = m_model.index(0, 0, parent);
    const QModelIndex last = m_model.index(count - 1, m_model.columnCount() - 1, parent);
    return Emit([&] { Q_EMIT m_model.dataChanged(first, last); });
}

QModelIndex TZEPSceneSync::Place(const TZEPObject& parent) const {
    return m_rows.Has(parent) ? Find(parent) : QModelIndex();
}

} // namespace ZEP
