#include "viewer/files/FileLayouts.h"

#include "viewer/files/OpenedFile.h"
#include <zep/batch/Batch.h>
#include <zep/framework/Exception.h>
#include <zep/sheets/Layout.h>

#include <QMap>
#include <QStringList>

namespace ZEP {

namespace {

/// Layouts stand beside the model, which in a scene of several drawings is a batch each.
void ListLayouts(const TZEPObject& batch, std::vector<TZEPLayout*>& layouts) {
    for (int i = 0, count = batch.GetItemsCount(); i < count; ++i) {
        TZEPObject* child = batch.GetItem(i);
        if (auto* layout = qobject_cast<TZEPLayout*>(child))
            layouts.push_back(layout);
        else if (qobject_cast<TZEPBatch*>(child))
            ListLayouts(*child, layouts);
    }
}

} // namespace

std::vector<TFileLayout> LayoutsOf(std::span<const TOpenedFile> files) {
    std::vector<TFileLayout> named;
    QMap<QString, int> seen;
    for (const TOpenedFile& file : files) {
        if (file.Format != TFileFormat::DXF && file.Format != TFileFormat::Scene) continue;
        std::vector<TZEPLayout*> layouts;
        ListLayouts(*file.Root, layouts);
        for (TZEPLayout* layout : layouts) {
            QString name = layout->Ident().isEmpty() ? QStringLiteral("Layout") : layout->Ident();
            const int number = ++seen[name];
            if (number > 1) name += QStringLiteral(" (%1)").arg(number);
            named.push_back({name, layout, file.Name});
        }
    }
    return named;
}

TZEPLayout* LayoutNamed(const QString& name, std::span<const TOpenedFile> files) {
    QStringList names{QStringLiteral("Model")};
    for (const TFileLayout& each : LayoutsOf(files)) {
        if (each.Name.compare(name, Qt::CaseInsensitive) == 0) return each.Layout;
        names << each.Name;
    }
    if (names.front().compare(name, Qt::CaseInsensitive) == 0) return nullptr;
    throw Exception(QStringLiteral("%1 has no layout \"%2\": it has %3.")
                        .arg(files.front().Name, name, names.join(QStringLiteral(", "))));
}

} // namespace ZEP
