#include "viewer/window/ContentsModel.h"

#include "viewer/content/Describe.h"
#include "viewer/files/Document.h"
#include "viewer/window/Icons.h"
#include "viewer/window/ShownHistory.h"
#include <zep/batch/Batch.h>
#include <zep/objects/Mesh.h>
#include <zep/view/Actor.h>
#include <zep/widgets/ObjectLook.h>

#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace ZEP {

namespace {

QString Counted(qint64 count, const QString& what) {
    return QStringLiteral("%1 %2%3").arg(QLocale().toString(count), what,
                                         count == 1 ? QString() : QStringLiteral("s"));
}

/// Readers put what is on a layer below an actor.
QString KindText(const TZEPObject& object) {
    const bool isLayer = object.metaObject() == &TZEPActor::staticMetaObject;
    return isLayer ? QStringLiteral("Layer") : KindOf(object);
}

QString Titled(const TZEPObject& object) {
    return QStringLiteral("%1 \"%2\": ").arg(KindText(object), object.Ident());
}

QString TipOf(TZEPObject& object, const QString& unit) {
    if (const int count = object.GetItemsCount())
        return Titled(object) + Counted(count, QStringLiteral("object"));
    auto* mesh = qobject_cast<TZEPMesh*>(&object);
    if (!mesh) return Describe(object, unit);
    return Titled(object) + Counted(mesh->Faces()->Count(), QStringLiteral("face")) +
           QStringLiteral(", ") + QLocale().toString(mesh->Vertexes()->Count()) +
           QStringLiteral(" vertices");
}

} // namespace

TContentsModel::TContentsModel(TDocument& document, QObject* parent)
    : TZEPSceneModel(parent), m_document(document), m_history(new TShownHistory(document, this)) {
    // While rows still stand for objects: views look at them once more when they are reset.
    connect(&document, &TDocument::AboutToChange, this, [this] { SetRoots({}); });
    connect(&document, &TDocument::Changed, this, &TContentsModel::Fill);
    Fill();
}

void TContentsModel::Fill() {
    std::vector<TZEPObject*> roots;
    for (const TOpenedFile& file : m_document.Files()) roots.push_back(file.Root);
    SetRoots(roots);
}

void TContentsModel::Search(const QString& text) {
    if (text.isEmpty()) return SetFilter({});
    SetFilter([text](const TZEPObject& object) {
        return NameOf(object).contains(text, Qt::CaseInsensitive) ||
               KindText(object).contains(text, Qt::CaseInsensitive);
    });
}

void TContentsModel::SetShown(const std::vector<TZEPObject*>& objects, bool shown) {
    m_history->Record(shown ? QStringLiteral("show") : QStringLiteral("hide"),
                      [&] { TZEPSceneModel::SetShown(objects, shown); });
}

void TContentsModel::ShowOnly(const std::vector<TZEPObject*>& objects) {
    m_history->Record(QStringLiteral("show only"), [&] { TZEPSceneModel::ShowOnly(objects); });
}

void TContentsModel::ShowAll() {
    m_history->Record(QStringLiteral("show all"), [this] { TZEPSceneModel::ShowAll(); });
}

bool TContentsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    bool isSet = false;
    m_history->Record(value.toInt() != Qt::Unchecked ? QStringLiteral("show")
                                                     : QStringLiteral("hide"),
                      [&] { isSet = TZEPSceneModel::setData(index, value, role); });
    return isSet;
}

QString TContentsModel::FileOf(const QModelIndex& index) const {
    QModelIndex top = index;
    while (top.parent().isValid()) top = top.parent();
    for (const TOpenedFile& file : m_document.Files())
        if (file.Root == ObjectAt(top)) return file.Name;
    return {};
}

QVariant TContentsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (!index.parent().isValid())
        if (QVariant value = FileData(index, role); value.isValid()) return value;
    if (role == Qt::ToolTipRole)
        return TipOf(*ObjectAt(index), m_document.UnitOf(*ObjectAt(index)));
    return TZEPSceneModel::data(index, role);
}

QVariant TContentsModel::FileData(const QModelIndex& index, int role) const {
    const bool isName = index.column() == NameColumn;
    if (isName && role == Qt::DisplayRole) return QFileInfo(FileOf(index)).fileName();
    if (isName && role == Qt::DecorationRole) return Icon("file");
    if (role != Qt::ToolTipRole) return {};
    return QDir::toNativeSeparators(FileOf(index)) + QLatin1Char('\n') +
           Counted(ObjectAt(index)->GetItemsCount(), QStringLiteral("object"));
}

} // namespace ZEP
