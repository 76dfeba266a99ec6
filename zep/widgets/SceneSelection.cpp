#include <zep/widgets/SceneSelection.h>

#include <zep/batch/GatheredClass.h>
#include <zep/scene/ForEach.h>
#include <zep/scene/SceneOf.h>
#include <zep/widgets/SceneModel.h>
#include <zep/widgets/SceneWatch.h>

#include <QItemSelectionModel>
#include <QPointer>
#include <QScopedValueRollback>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ZEP {

namespace {

constexpr qsizetype MostRuns = 500; // a selection of Qt's slows down with the square of them

using TObjects = std::vector<TZEPObject*>;

/// Neighbours become one range.
QItemSelection RunsOf(QModelIndexList rows) {
    std::ranges::sort(rows, [](const QModelIndex& a, const QModelIndex& b) {
        const std::pair left(a.parent().internalId(), a.row());
        return left < std::pair(b.parent().internalId(), b.row());
    });
    QItemSelection runs;
    for (qsizetype first = 0, next = 0; first < rows.size(); first = next) {
        const QModelIndex parent = rows[first].parent();
        for (next = first + 1; next < rows.size() && rows[next].parent() == parent &&
                               rows[next].row() == rows[next - 1].row() + 1;)
            ++next;
        runs.append(QItemSelectionRange(rows[first], rows[next - 1]));
        if (runs.size() > MostRuns) return {};
    }
    return runs;
}

} // namespace

class TZEPSceneSelection::TSync final : private TZEPSceneListener {
public:
    TSync(TZEPSceneSelection& owner, TZEPSceneModel* model, QItemSelectionModel* rows)
        : m_owner(owner), m_model(model), m_rows(rows), m_watch(*this) {
        connect(rows, &QItemSelectionModel::selectionChanged, &owner, [this] { TakeRows(); });
        connect(model, &QAbstractItemModel::modelReset, &owner, [this] { Attach(); });
        Attach();
    }

    bool MeanLeaves = false;
    std::size_t MostObjects = 20'000;

    [[nodiscard]] TObjects Selected() const;

private:
    void Inserted(TZEPObject& object) override {
        Note(object);
        ForEachObject(object, [this](TZEPObject& below) { Note(below); });
    }
    void Removing(TZEPObject& object) override;
    void Moving(TZEPObject&, int) override {}
    void Renamed(TZEPObject&) override {}
    void Changed(TObject* sender) override {
        auto* object = dynamic_cast<TZEPObject*>(sender);
        if (object) Note(*object);
    }
    void SceneGone() override {
        m_selected.clear();
        m_changing.clear();
    }

    void Attach();
    void Note(TZEPObject& object);
    void NoteChanged(TZEPObject* object);
    void Schedule();
    void TakeRows();
    void Select(const TObjects& wanted);
    void Follow();
    [[nodiscard]] TObjects ObjectsOfRows() const;
    void AddObjects(TZEPObject& row, TObjects& objects) const;
    [[nodiscard]] std::unordered_set<TZEPObject*> Reached() const;

    TZEPSceneSelection& m_owner;
    QPointer<TZEPSceneModel> m_model;
    QPointer<QItemSelectionModel> m_rows;
    TZEPSceneWatch m_watch;
    std::array<QMetaObject::Connection, 2> m_events;
    std::unordered_map<TZEPObject*, QPointer<TZEPObject>> m_selected; ///< in the scene
    std::unordered_multiset<TZEPObject*> m_changing; ///< between both events of the scene
    bool m_selects = false;
    bool m_following = false;
    bool m_scheduled = false;
};

// --- the scene ---------------------------------------------------------------------------------

void TZEPSceneSelection::TSync::Attach() {
    Schedule(); // views forget their selection with a reset
    TZEPScene* scene = m_model->Scene();
    if (scene == m_watch.Scene()) return;
    for (QMetaObject::Connection& event : m_events) disconnect(event);
    SceneGone();
    m_watch.Watch(scene);
    if (!scene) return;
    m_events = {connect(scene, &TZEPScene::BeforeSelect, &m_owner,
                        [this](TZEPObject* object) { m_changing.insert(object); }),
                connect(scene, &TZEPScene::AfterSelect, &m_owner,
                        [this](TZEPObject* object) { NoteChanged(object); })};
    Inserted(*scene);
}

// A slot that heard of it earlier may have freed it.
void TZEPSceneSelection::TSync::NoteChanged(TZEPObject* object) {
    const auto found = m_changing.find(object);
    if (found == m_changing.end()) return;
    m_changing.erase(found);
    Note(*object);
}

void TZEPSceneSelection::TSync::Note(TZEPObject& object) {
    const bool isNews = object.Selected() ? !std::exchange(m_selected[&object], &object)
                                          : m_selected.erase(&object) > 0;
    if (isNews) Schedule();
}

void TZEPSceneSelection::TSync::Removing(TZEPObject& object) {
    if (m_selected.empty() && m_changing.empty()) return;
    const auto forget = [this](TZEPObject& gone) {
        m_selected.erase(&gone);
        m_changing.erase(&gone);
    };
    forget(object);
    ForEachObject(object, forget);
}

TObjects TZEPSceneSelection::TSync::Selected() const {
    TObjects objects;
    for (const auto& [address, object] : m_selected)
        if (object) objects.push_back(object);
    return objects;
}

void TZEPSceneSelection::TSync::Schedule() {
    if (std::exchange(m_scheduled, true)) return;
    QMetaObject::invokeMethod(
        &m_owner,
        [this] {
            m_scheduled = false;
            Follow();
        },
        Qt::QueuedConnection);
}

// --- from rows to objects ----------------------------------------------------------------------

void TZEPSceneSelection::TSync::AddObjects(TZEPObject& row, TObjects& objects) const {
    if (!MeanLeaves || (row.GetItemsCount() == 0 && !IsGroup(row))) return objects.push_back(&row);
    for (int i = 0, count = row.GetItemsCount(); i < count; ++i)
        if (objects.size() <= MostObjects) AddObjects(*row.GetItem(i), objects);
}

TObjects TZEPSceneSelection::TSync::ObjectsOfRows() const {
    TObjects objects;
    for (const QItemSelectionRange& range : m_rows->selection())
        for (int row = range.top(); row <= range.bottom() && objects.size() <= MostObjects; ++row)
            AddObjects(*TZEPSceneModel::ObjectAt(m_model->index(row, 0, range.parent())), objects);
    return objects;
}

void TZEPSceneSelection::TSync::TakeRows() {
    if (m_following || !m_model || !m_rows) return;
    // Rows that go away are deselected by their views, and not by anybody's choice.
    if (m_model->IsChanging()) return Schedule();
    TObjects objects = ObjectsOfRows();
    if (objects.size() > MostObjects) objects.clear();
    Schedule(); // the scene may decide otherwise
    Select(objects);
}

// Events of the scene may do as they like with the objects.
void TZEPSceneSelection::TSync::Select(const TObjects& wanted) {
    if (std::exchange(m_selects, true)) return;
    const std::unordered_set<TZEPObject*> kept(wanted.begin(), wanted.end());
    std::vector<QPointer<TZEPObject>> queue;
    std::ranges::copy_if(Reached(), std::back_inserter(queue),
                         [&](TZEPObject* object) { return !kept.contains(object); });
    const std::size_t others = queue.size();
    queue.insert(queue.end(), wanted.begin(), wanted.end());
    const QPointer<TZEPSceneSelection> alive(&m_owner);
    for (std::size_t i = 0; i < queue.size(); ++i) {
        const TZEPScene* scene = SceneOf(queue[i]);
        if (scene && scene == m_watch.Scene()) queue[i]->SetSelected(i >= others);
        if (!alive) return;
    }
    m_selects = false;
}

// --- from objects to rows ----------------------------------------------------------------------

std::unordered_set<TZEPObject*> TZEPSceneSelection::TSync::Reached() const {
    std::unordered_set<TZEPObject*> reached;
    for (TZEPObject* object : Selected())
        if (m_model->Reaches(*object)) reached.insert(object);
    return reached;
}

void TZEPSceneSelection::TSync::Follow() {
    if (!m_model || !m_rows || m_model->IsChanging()) return;
    m_model->Sync();
    const TObjects rows = ObjectsOfRows();
    const std::unordered_set<TZEPObject*> selected = Reached();
    const bool isSame = std::unordered_set(rows.begin(), rows.end()) == selected;
    if (isSame || (rows.size() > MostObjects && selected.empty())) return;
    QModelIndexList indexes;
    for (const TZEPObject* object : selected)
        if (const QModelIndex index = m_model->IndexOf(*object); index.isValid()) indexes << index;
    const QItemSelection runs = RunsOf(indexes);
    const QPointer<TZEPSceneSelection> alive(&m_owner);
    m_following = true;
    m_rows->select(runs, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!alive) return;
    m_following = false;
    if (runs.isEmpty()) return;
    const QModelIndex first = runs.front().topLeft();
    if (m_rows) m_rows->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    if (alive && first.isValid()) Q_EMIT m_owner.Followed(first);
}

// -----------------------------------------------------------------------------------------------

TZEPSceneSelection::TZEPSceneSelection(TZEPSceneModel* model, QItemSelectionModel* rows,
                                       QObject* parent)
    : QObject(parent), m_sync(std::make_unique<TSync>(*this, model, rows)) {}

TZEPSceneSelection::~TZEPSceneSelection() = default;

void TZEPSceneSelection::SetRowsMeanLeaves(bool leaves) {
    m_sync->MeanLeaves = leaves;
}

void TZEPSceneSelection::SetMostObjects(std::size_t count) {
    m_sync->MostObjects = count;
}

std::vector<TZEPObject*> TZEPSceneSelection::Objects() const {
    return m_sync->Selected();
}

} // namespace ZEP
