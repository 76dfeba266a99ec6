#include <zep/widgets/SceneSync.h>

#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/Watch.h>
#include <zep/scene/ForEach.h>
#include <zep/scene/Scene.h>

#include <QScopeGuard>
#include <QTimer>

namespace ZEP {

namespace {

constexpr int LeavingTime = 50; // ms until it is looked again whether an object has gone

} // namespace

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

// One among a million that stand open says by itself what changes: the rows beside it stay.
void TZEPSceneSync::SetShown(const std::vector<TZEPObject*>& objects, bool shown) {
    if (objects.size() == 1 && TZEPVisibility::IsByItself(*objects.front())) {
        TZEPObject* object = objects.front();
        const TZEPWatch alive(object);
        object->SetVisible(shown);
        return alive ? Changed(object) : void();
    }
    ChangeVisibility([&](TZEPVisibility& visibility) {
        for (TZEPObject* object : objects) visibility.SetShown(*object, shown);
    });
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
    if (m_rows.Filter().IsActive()) return Lose();
    Mark(parent);
    const int index = object.GetItemIndex();
    if (index + 1 == parent.GetItemsCount()) {
        m_rows.HoldBack(parent);
        return Schedule();
    }
    if (!CanTell()) return Lose();
    m_rows.HideNew(object); // what was appended before it is told first
    if (!PresentHeldBack()) return;
    Emit([&] {
        BeginInsert(Place(parent), index, index);
        m_rows.Reveal();
        EndInsert();
    });
}

// A slot may free the object, and then no listener hears of it: it is going already. Qt asks for
// places of indexes after that.
void TZEPSceneSync::Removing(TZEPObject& object) {
    if (m_rows.IsSettled()) m_rows.Settle(); // its parent may go now
    // Each row that goes costs a view as much as it has rows.
    const bool areMany = ++m_removed > MostTold;
    if (m_rows.IsLost() || m_rows.HoldsRoot(object) || areMany) {
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
    const auto freed = QObject::connect(&object, &QObject::destroyed, &m_model, [this] { Lose(); });
    const auto done = qScopeGuard([&freed] { QObject::disconnect(freed); });
    if (!PresentHeldBack()) return;
    const auto isThere = [&] { return !m_rows.IsLost() && object.Parent() == &parent; };
    if (!isThere()) return Lose();
    const bool told = Emit([&] {
        BeginRemove(Place(parent), object.GetItemIndex());
        if (isThere()) m_rows.HideGoing(object);
        EndRemove();
    });
    if (!told) return;
    if (!isThere()) return Lose();
    ForgetAll(object); // views have looked meanwhile
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
    m_telling.clear();
    m_lastLooked = nullptr;
    m_allMarked = false;
}

void TZEPSceneSync::ForgetAll(TZEPObject& gone) {
    for (const TZEPObject* above = gone.Parent(); above; above = above->Parent())
        m_visibility.Forget(*above);
    m_lastLooked = nullptr;
    m_visibility.ForgetBelow(gone);
    if (m_marked.empty() && m_looked.empty() && m_telling.empty() && !m_rows.HoldingBack()) return;
    const auto forget = [this](const TZEPObject& object) {
        for (TObjects* known : {&m_marked, &m_looked, &m_telling}) known->erase(&object);
        m_rows.Forget(object);
    };
    forget(gone);
    ForEachObject(gone, forget);
}

} // namespace ZEP
