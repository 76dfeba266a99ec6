#include <zep/widgets/SceneModel.h>

#include <zep/framework/Exception.h>
#include <zep/scene/SceneOf.h>
#include <zep/sheets/Layout.h>
#include <zep/view/Camera.h>
#include <zep/widgets/ObjectLook.h>
#include <zep/widgets/SceneSync.h>

#include <QLocale>

namespace ZEP {

namespace {

TZEPScene* NeedScene(TZEPObject* root) {
    TZEPScene* scene = SceneOf(root);
    if (root && !scene)
        throw Exception(QStringLiteral("A tree model needs an object that stands in a scene"));
    return scene;
}

/// A camera shows nothing that could be hidden.
bool HasBox(const TZEPObject& object) {
    return !qobject_cast<const TZEPCamera*>(&object) && !qobject_cast<const TZEPLayout*>(&object);
}

} // namespace

class TZEPSceneModel::TSync final : public TZEPSceneSync {
public:
    explicit TSync(TZEPSceneModel& model) : TZEPSceneSync(model), m_model(model) {}

private:
    QModelIndex Find(const TZEPObject& object) const override { return m_model.Find(object); }
    void BeginReset() override { m_model.beginResetModel(); }
    void EndReset() override { m_model.endResetModel(); }
    void BeginInsert(const QModelIndex& parent, int first, int last) override {
        m_model.beginInsertRows(parent, first, last);
    }
    void EndInsert() override { m_model.endInsertRows(); }
    void BeginRemove(const QModelIndex& parent, int row) override {
        m_model.beginRemoveRows(parent, row, row);
    }
    void EndRemove() override { m_model.endRemoveRows(); }
    void BeginMove(const QModelIndex& parent, int row, int before) override {
        m_model.beginMoveRows(parent, row, row, parent, before);
    }
    void EndMove() override { m_model.endMoveRows(); }

    TZEPSceneModel& m_model;
};

TZEPSceneModel::TZEPSceneModel(QObject* parent)
    : QAbstractItemModel(parent), m_sync(std::make_unique<TSync>(*this)) {}

TZEPSceneModel::~TZEPSceneModel() = default;

// --- what it shows -----------------------------------------------------------------------------

void TZEPSceneModel::SetRoot(TZEPObject* root) {
    m_sync->Reset(NeedScene(root), [=](TZEPSceneRows& rows) { rows.SetHolder(root); });
}

void TZEPSceneModel::SetRoots(const std::vector<TZEPObject*>& roots) {
    TZEPScene* scene = roots.empty() ? nullptr : NeedScene(roots.front());
    for (TZEPObject* root : roots)
        if (SceneOf(root) != scene)
            throw Exception(QStringLiteral("The roots of a tree model stand in one scene"));
    m_sync->Reset(scene, [&](TZEPSceneRows& rows) { rows.SetRoots(roots); });
}

TZEPScene* TZEPSceneModel::Scene() const {
    return m_sync->Scene();
}

void TZEPSceneModel::SetFilter(std::function<bool(const TZEPObject&)> finds) {
    m_sync->Reset(Scene(), [&](TZEPSceneRows& rows) { rows.Filter().Set(std::move(finds)); });
}

bool TZEPSceneModel::IsFiltered() const {
    return m_sync->Rows().Filter().IsActive();
}

long long TZEPSceneModel::Found() const {
    return m_sync->Rows().Filter().Found();
}

void TZEPSceneModel::Sync() {
    m_sync->Sync();
}

void TZEPSceneModel::Refresh() {
    m_sync->Refresh();
}

bool TZEPSceneModel::IsChanging() const {
    return m_sync->IsEmitting();
}

bool TZEPSceneModel::Reaches(const TZEPObject& object) const {
    return m_sync->Rows().Reaches(object);
}

// --- rows --------------------------------------------------------------------------------------

TZEPObject* TZEPSceneModel::ObjectAt(const QModelIndex& index) {
    return static_cast<TZEPObject*>(index.internalPointer());
}

QModelIndex TZEPSceneModel::IndexOf(const TZEPObject& object) {
    Sync();
    return m_sync->Rows().Has(object) ? Find(object) : QModelIndex();
}

QModelIndex TZEPSceneModel::Find(const TZEPObject& object) const {
    const std::optional<int> row = m_sync->Rows().RowOf(object);
    return row ? createIndex(*row, 0, &object) : QModelIndex();
}

QModelIndex TZEPSceneModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    m_sync->NoteLook(ObjectAt(parent));
    return createIndex(row, column, m_sync->Rows().At(ObjectAt(parent), row));
}

QModelIndex TZEPSceneModel::parent(const QModelIndex& index) const {
    if (!index.isValid() || m_sync->Rows().IsLost()) return {};
    const TZEPObject* parent = m_sync->Rows().ParentOf(*ObjectAt(index));
    return parent ? Find(*parent) : QModelIndex();
}

int TZEPSceneModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : m_sync->Rows().Count(ObjectAt(parent));
}

int TZEPSceneModel::columnCount(const QModelIndex&) const {
    return ColumnCount;
}

Qt::ItemFlags TZEPSceneModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    if (!index.isValid() || m_sync->Rows().IsLost()) return flags;
    const bool hasBox = index.column() == NameColumn && HasBox(*ObjectAt(index));
    return hasBox ? flags | Qt::ItemIsUserCheckable : flags;
}

// --- what they show ----------------------------------------------------------------------------

QVariant TZEPSceneModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || m_sync->Rows().IsLost()) return {};
    const TZEPObject& object = *ObjectAt(index);
    if (index.column() == NameColumn) return NameData(object, role);
    if (index.column() == ColorColumn && role == Qt::DecorationRole) {
        const std::optional<TColor> color = ColorOf(object);
        return color ? QVariant(ColorIcon(*color)) : QVariant();
    }
    if (index.column() != CountColumn) return {};
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole || object.GetItemsCount() == 0) return {};
    return QLocale().toString(object.GetItemsCount());
}

QVariant TZEPSceneModel::NameData(const TZEPObject& object, int role) const {
    switch (role) {
    case Qt::DisplayRole:
        return NameOf(object);
    case Qt::DecorationRole: {
        const QIcon icon = ObjectIcon(object);
        return icon.isNull() ? QVariant() : QVariant(icon);
    }
    case Qt::CheckStateRole:
        return HasBox(object) ? QVariant(m_sync->StateOf(object)) : QVariant();
    default:
        return {};
    }
}

QVariant TZEPSceneModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    if (section == NameColumn) return QStringLiteral("Name");
    return section == CountColumn ? QVariant(QStringLiteral("Objects")) : QVariant();
}

// --- what is seen ------------------------------------------------------------------------------

bool TZEPSceneModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable)) return false;
    SetShown({ObjectAt(index)}, value.toInt() != Qt::Unchecked);
    return true;
}

void TZEPSceneModel::SetShown(const std::vector<TZEPObject*>& objects, bool shown) {
    m_sync->SetShown(objects, shown);
}

void TZEPSceneModel::ShowOnly(const std::vector<TZEPObject*>& objects) {
    m_sync->ChangeVisibility(
        [&](TZEPVisibility& visibility) { visibility.ShowOnly(m_sync->Rows().Tops(), objects); });
}

void TZEPSceneModel::ShowAll() {
    m_sync->ChangeVisibility([&](TZEPVisibility& visibility) {
        for (TZEPObject* top : m_sync->Rows().Tops()) visibility.ShowAll(*top);
    });
}

} // namespace ZEP
