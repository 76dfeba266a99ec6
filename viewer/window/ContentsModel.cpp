#include "viewer/window/ContentsModel.h"

#include "viewer/content/Describe.h"
#include "viewer/drawing/FileRoot.h"
#include "viewer/files/Document.h"
#include "viewer/files/Kinds.h"
#include <zep/objects/Mesh.h>
#include <zep/scene/Scene.h>

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>

namespace ZEP {

namespace {

QString Counted(qint64 count, const QString& what) {
    return QStringLiteral("%1 %2%3").arg(QLocale().toString(count), what,
                                         count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

TContentsModel::TContentsModel(TDocument& document, QObject* parent)
    : QAbstractItemModel(parent), m_document(document) {
    // While rows still stand for objects: views look at them once more when they are reset.
    connect(&document, &TDocument::AboutToChange, this, [this] {
        beginResetModel();
        m_roots.clear();
        m_shown.clear();
        endResetModel();
    });
    connect(&document, &TDocument::Changed, this, &TContentsModel::Fill);
    Fill();
}

void TContentsModel::Fill() {
    beginResetModel();
    m_roots.clear();
    m_shown.clear();
    for (const TOpenedFile& file : m_document.Files()) m_roots.push_back(file.Root);
    m_filter.Search(m_roots, m_text);
    std::ranges::copy_if(m_roots, std::back_inserter(m_shown),
                         [this](TZEPObject* root) { return m_filter.Keeps(*root); });
    m_visibility.Forget();
    endResetModel();
}

void TContentsModel::SetFilter(const QString& text) {
    if (m_text == text) return;
    m_text = text;
    Fill();
}

// --- rows --------------------------------------------------------------------------------------

TZEPObject* TContentsModel::ObjectAt(const QModelIndex& index) {
    return static_cast<TZEPObject*>(index.internalPointer());
}

QModelIndex TContentsModel::IndexOf(const TZEPObject& object) const {
    const auto root = std::ranges::find(m_shown, &object);
    if (root != m_shown.end())
        return createIndex(static_cast<int>(root - m_shown.begin()), 0, &object);
    const TZEPObject* parent = object.Parent();
    if (!parent || !IndexOf(*parent).isValid()) return {};
    const std::optional<int> row = m_filter.RowOf(*parent, object);
    return row ? createIndex(*row, 0, &object) : QModelIndex();
}

QString TContentsModel::FileOf(const QModelIndex& index) const {
    QModelIndex top = index;
    while (top.parent().isValid()) top = top.parent();
    for (const TOpenedFile& file : m_document.Files())
        if (file.Root == ObjectAt(top)) return file.Name;
    return {};
}

QModelIndex TContentsModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    if (!parent.isValid()) return createIndex(row, column, m_shown[static_cast<std::size_t>(row)]);
    return createIndex(row, column, m_filter.ChildAt(*ObjectAt(parent), row));
}

QModelIndex TContentsModel::parent(const QModelIndex& index) const {
    const TZEPObject* object = ObjectAt(index);
    if (!object || std::ranges::find(m_shown, object) != m_shown.end()) return {};
    return IndexOf(*object->Parent());
}

int TContentsModel::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0) return 0;
    if (!parent.isValid()) return static_cast<int>(m_shown.size());
    return m_filter.CountBelow(*ObjectAt(parent));
}

int TContentsModel::columnCount(const QModelIndex&) const {
    return ColumnCount;
}

Qt::ItemFlags TContentsModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    if (!index.isValid() || index.column() != NameColumn) return flags;
    const bool isCamera = KindOf(*ObjectAt(index)) == TKind::Camera;
    return isCamera ? flags : flags | Qt::ItemIsUserCheckable;
}

// --- what they show ----------------------------------------------------------------------------

QVariant TContentsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    TZEPObject& object = *ObjectAt(index);
    if (role == Qt::ToolTipRole) return TipOf(object);
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

QVariant TContentsModel::NameData(TZEPObject& object, int role) const {
    const bool isFile = KindOf(object) == TKind::File;
    switch (role) {
    case Qt::DisplayRole:
        return isFile ? QFileInfo(FileOf(IndexOf(object))).fileName() : NameOf(object);
    case Qt::DecorationRole:
        return KindIcon(KindOf(object));
    case Qt::CheckStateRole:
        if (KindOf(object) == TKind::Camera) return {};
        return m_visibility.StateOf(object);
    default:
        return {};
    }
}

QString TContentsModel::TipOf(TZEPObject& object) const {
    if (KindOf(object) == TKind::File)
        return QDir::toNativeSeparators(FileOf(IndexOf(object))) + QStringLiteral("\n") +
               Counted(object.GetItemsCount(), QStringLiteral("object"));
    if (object.GetItemsCount() > 0)
        return QStringLiteral("%1 \"%2\": %3")
            .arg(KindText(object), object.Ident(),
                 Counted(object.GetItemsCount(), QStringLiteral("object")));
    if (auto* mesh = qobject_cast<TZEPMesh*>(&object))
        return QStringLiteral("%1 \"%2\": %3, %4")
            .arg(KindText(object), object.Ident(),
                 Counted(mesh->Faces()->Count(), QStringLiteral("face")),
                 QLocale().toString(mesh->Vertexes()->Count()) + QStringLiteral(" vertices"));
    return Describe(object);
}

QVariant TContentsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    if (section == NameColumn) return QStringLiteral("Name");
    return section == CountColumn ? QVariant(QStringLiteral("Objects")) : QVariant();
}

// --- what is seen ------------------------------------------------------------------------------

bool TContentsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::CheckStateRole) return false;
    SetShown({ObjectAt(index)}, value.toInt() != Qt::Unchecked);
    return true;
}

template <class Change>
void TContentsModel::ChangeVisibility(Change&& change) {
    TZEPScene& scene = *m_document.Scene();
    scene.BeginUpdate();
    change();
    scene.EndUpdate();
    scene.Invalidate(&scene);
    emit VisibilityChanged();
}

void TContentsModel::SetShown(const std::vector<TZEPObject*>& objects, bool shown) {
    ChangeVisibility([&] {
        for (TZEPObject* object : objects) m_visibility.SetShown(*object, shown);
    });
}

void TContentsModel::ShowOnly(const std::vector<TZEPObject*>& objects) {
    ChangeVisibility([&] { m_visibility.ShowOnly(m_roots, objects); });
}

void TContentsModel::ShowAll() {
    ChangeVisibility([&] {
        for (TZEPObject* root : m_roots) m_visibility.ShowAll(*root);
    });
}

} // namespace ZEP
