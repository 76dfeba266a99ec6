#include <zep/widgets/SceneSync.h>

#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/scene/ForEach.h>
#include <zep/scene/Scene.h>

#include <QPointer>
#include <QTimer>

#include <utility>

namespace ZEP {

namespace {

constexpr std::size_t MostTold = 100; // rows, or parents of rows, that views are told of singly
constexpr int LeavingTime = 50;       // ms until it is looked again whether an object has gone

} // namespace

// --- what views are told -----------------------------------------------------------------------

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
    const bool hasNews = m_rows.IsLost() || !m_rows.HeldBack().empty() || !m_marked.empty();
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
    if (IsEmitting()) return;
    if (m_rows.IsLost()) return Recover();
    Sync();
}

void TZEPSceneSync::Sync() {
    if (IsEmitting() || m_rows.IsLost()) return;
    if (PresentHeldBack()) Tell();
}

bool TZEPSceneSync::PresentHeldBack() {
    while (!m_rows.HeldBack().empty()) {
        const auto [parent, presented] = *m_rows.HeldBack().begin();
        const int count = parent->GetItemsCount();
        const int first = m_rows.Count(parent);
        const int last = first + count - presented - 1;
        const bool told = Emit([&, parent = parent] {
            BeginInsert(Place(*parent), first, last);
            if (!m_rows.IsLost()) m_rows.Present(*parent, count);
            EndInsert();
        });
        if (!told) return false;
    }
    return true;
}

void TZEPSceneSync::Tell() {
    if (std::exchange(m_allMarked, false)) return TellAll();
    std::unordered_set<const TZEPObject*> rows;
    for (const TZEPObject* marked : std::exchange(m_marked, {}))
        for (const TZEPObject* row = marked; row && rows.insert(row).second;) row = row->Parent();
    for (const TZEPObject* row : rows) {
        if (!m_rows.Has(*row)) continue;
        const QModelIndex index = Find(*row);
        const QModelIndex last = index.siblingAtColumn(m_model.columnCount() - 1);
        if (!Emit([&] { Q_EMIT m_model.dataChanged(index, last); })) return;
    }
}

void TZEPSceneSync::TellAll() {
    if (m_looked.size() > MostTold) {
        Emit([&] {
            Q_EMIT m_model.layoutAboutToBeChanged();
            Q_EMIT m_model.layoutChanged();
        });
        return;
    }
    const std::unordered_set<const TZEPObject*> looked = m_looked;
    if (!TellRows({})) return;
    for (const TZEPObject* parent : looked)
        if (m_rows.ShowsBelow(*parent) && !TellRows(Place(*parent))) return;
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

// --- all rows ----------------------------------------------------------------------------------

void TZEPSceneSync::Reset(TZEPScene* scene, const std::function<void(TZEPSceneRows&)>& change) {
    change(m_rows);
    if (IsEmitting()) {
        m_watch.Watch(scene);
        return Lose();
    }
    Emit([&] {
        BeginReset();
        m_watch.Watch(scene);
        m_leaving.clear();
        Forget();
        m_rows.Refill(scene);
        EndReset();
    });
}

// Views may hold indexes of what is about to be freed: there are no rows until it is gone.
void TZEPSceneSync::Lose() {
    if (m_rows.IsLost()) return;
    Schedule();
    if (IsEmitting()) {
        m_rows.Lose();
        Forget();
        m_resetDue = true;
        return;
    }
    Emit([&] {
        BeginReset();
        m_rows.Lose();
        Forget();
        EndReset();
    });
}

void TZEPSceneSync::Recover() {
    if (!Scene()) return;
    if (IsLeaving()) {
        QTimer::singleShot(LeavingTime, &m_model, [this] { Schedule(); });
        return;
    }
    Emit([&] {
        BeginReset();
        m_rows.Refill(Scene());
        EndReset();
    });
}

bool TZEPSceneSync::IsLeaving() {
    std::erase_if(m_leaving, [](const TZEPChildPlace& place) { return !place.Holds(); });
    return !m_leaving.empty();
}

void TZEPSceneSync::SceneGone() {
    m_leaving.clear();
    Lose();
}

void TZEPSceneSync::Refresh() {
    m_visibility.Forget();
    MarkAll();
}

void TZEPSceneSync::ChangeVisibility(const std::function<void(TZEPVisibility&)>& change) {
    TZEPScene* scene = Scene();
    if (!scene) return;
    scene->BeginUpdate();
    change(m_visibility);
    scene->EndUpdate();
    Refresh();
}

// --- what happens in the scene -----------------------------------------------------------------

void TZEPSceneSync::Inserted(TZEPObject& object) {
    std::erase_if(m_leaving, [&](const TZEPChildPlace& place) { return place.Child == &object; });
    if (m_rows.IsLost()) return;
    if (m_rows.BringsRoot(object)) return Lose();
    TZEPObject& parent = *object.Parent();
    m_visibility.Update(object);
    m_rows.Settle(object);
    if (!m_rows.ShowsBelow(parent)) return;
    if (!m_rows.IsSettled() || m_rows.Filter().IsActive()) return Lose();
    Mark(parent);
    const int index = object.GetItemIndex();
    if (index + 1 == parent.GetItemsCount()) return HoldBack(parent, index);
    if (IsEmitting()) return Lose();
    const auto held = m_rows.HeldBack().find(&parent);
    if (held != m_rows.HeldBack().end()) m_rows.Present(parent, held->second + 1);
    m_rows.Hide(object); // what was appended before it is told first
    if (!PresentHeldBack()) return;
    Emit([&] {
        BeginInsert(Place(parent), index, index);
        m_rows.Settle();
        EndInsert();
    });
}

void TZEPSceneSync::HoldBack(const TZEPObject& parent, int presented) {
    if (!m_rows.HeldBack().contains(&parent)) m_rows.Present(parent, presented);
    Schedule();
}

void TZEPSceneSync::Removing(TZEPObject& object) {
    if (m_rows.IsSettled()) m_rows.Settle(); // its parent may go now
    if (m_rows.IsLost() || m_rows.HoldsRoot(object)) {
        Lose();
        IsLeaving(); // those that have gone, whose parents may go with this one
        m_leaving.emplace_back(object);
        return;
    }
    ForgetAll(object);
    TZEPObject& parent = *object.Parent();
    if (!m_rows.ShowsBelow(parent)) return;
    if (!CanTell()) return Lose();
    Mark(parent);
    if (!PresentHeldBack()) return;
    const int row = object.GetItemIndex();
    const bool told = Emit([&] {
        BeginRemove(Place(parent), row);
        if (!m_rows.IsLost()) m_rows.Hide(object);
        EndRemove();
    });
    if (told) ForgetAll(object); // views have looked meanwhile
}

void TZEPSceneSync::Moving(TZEPObject& object, int to) {
    if (m_rows.IsLost() || !m_rows.ShowsBelow(*object.Parent())) return;
    if (!CanTell()) return Lose();
    if (!PresentHeldBack()) return;
    const int row = object.GetItemIndex();
    Emit([&] {
        const QModelIndex place = Place(*object.Parent());
        BeginMove(place, row, to > row ? to + 1 : to);
        if (!m_rows.IsLost()) m_rows.Move(object, to);
        EndMove();
    });
}

bool TZEPSceneSync::CanTell() {
    return !IsEmitting() && m_rows.IsSettled() && !m_rows.Filter().IsActive();
}

void TZEPSceneSync::Changed(TObject* sender) {
    if (m_rows.IsLost()) return;
    TZEPMaterialLibrary* library = Scene()->MaterialLibrary();
    if (sender == static_cast<TObject*>(Scene())) return Refresh();
    if (library && sender == static_cast<TObject*>(library->Materials())) return MarkAll();
    auto* object = dynamic_cast<TZEPObject*>(sender);
    if (!object) return;
    if (object->GetItemsCount() > 0) {
        m_visibility.ForgetBelow(*object);
        MarkAll();
    }
    m_visibility.Update(*object);
    Mark(*object);
}

// While a child is leaving it is still there: nothing of it may be kept in mind.
Qt::CheckState TZEPSceneSync::StateOf(const TZEPObject& object) const {
    return m_rows.IsSettled() ? m_visibility.StateOf(object) : TZEPVisibility().StateOf(object);
}

// --- what is known -----------------------------------------------------------------------------

void TZEPSceneSync::NoteLook(const TZEPObject* parent) {
    if (!parent || parent == m_lastLooked) return;
    m_lastLooked = parent;
    m_looked.insert(parent);
}

void TZEPSceneSync::Mark(TZEPObject& object) {
    if (m_rows.IsLost() || m_allMarked) return;
    m_marked.insert(&object);
    if (m_marked.size() > MostTold) MarkAll();
    Schedule();
}

void TZEPSceneSync::MarkAll() {
    m_marked.clear();
    m_allMarked = true;
    Schedule();
}

void TZEPSceneSync::Forget() {
    m_visibility.Forget();
    m_looked.clear();
    m_marked.clear();
    m_lastLooked = nullptr;
    m_allMarked = false;
}

void TZEPSceneSync::ForgetAll(TZEPObject& gone) {
    for (const TZEPObject* above = gone.Parent(); above; above = above->Parent())
        m_visibility.Forget(*above);
    m_lastLooked = nullptr;
    m_visibility.ForgetBelow(gone);
    if (m_marked.empty() && m_looked.empty()) return;
    const auto forget = [this](TZEPObject& object) {
        m_marked.erase(&object);
        m_looked.erase(&object);
    };
    forget(gone);
    ForEachObject(gone, forget);
}

} // namespace ZEP
