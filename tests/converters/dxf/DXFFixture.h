#pragma once

#include "tests/ErrorOf.h"
#include "tests/converters/dxf/DXFPairs.h"
#include <zep/converters/dxf/Converter.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace ZEP {

using TTexts = std::vector<std::string>;

/// A table of layers: "2 A|62 1", each a record.
inline std::string LayerTable(const TTexts& records) {
    std::string pairs = "0 SECTION|2 TABLES|0 TABLE|2 LAYER|70 9|";
    for (const std::string& record : records) pairs += "0 LAYER|" + record + "|";
    return pairs + "0 ENDTAB|0 ENDSEC|";
}

inline std::string Entities(const std::string& pairs) {
    return "0 SECTION|2 ENTITIES|" + pairs + "|0 ENDSEC|0 EOF";
}

/// "1 -2.5 0".
inline std::string PointText(const TGLArrayd3& point) {
    QStringList numbers;
    for (const double value : point) numbers << QString::number(value == 0 ? 0 : value);
    return numbers.join(u' ').toStdString();
}

template <class TItems>
std::string PointsOf(const TItems& items) {
    QStringList points;
    for (int i = 0; i < items.Count(); ++i)
        points << QString::fromStdString(PointText(items[i].Data()));
    return points.join(QStringLiteral(", ")).toStdString();
}

inline std::string FacesOf(TZEPFaces& faces) {
    QStringList names;
    for (int i = 0; i < faces.Count(); ++i) names << faces[i].GetDisplayName();
    return names.join(u' ').toStdString();
}

inline std::string PlaceOf(TZEPObject& object) {
    return PointText(object.XForm()->Translate()->Data()) + " x " +
           PointText(object.XForm()->Scale()->Data());
}

inline std::string GeometryOf(TZEPObject* object) {
    QString text;
    QTextStream stream(&text);
    const auto add = [&stream](const std::string& part) { stream << QString::fromStdString(part); };
    if (auto* line = qobject_cast<TZEPLine*>(object))
        add(PointText(line->P1()->Data()) + " > " + PointText(line->P2()->Data()));
    if (auto* point = qobject_cast<TZEPPoint*>(object)) add(PointText(point->P()->Data()));
    if (auto* label = qobject_cast<TZEPLabel*>(object)) stream << u'\'' << label->Caption() << "' ";
    if (object->inherits("ZEP::TZEPCircle") || object->inherits("ZEP::TZEPArc") ||
        object->inherits("ZEP::TZEPLabel"))
        add(PlaceOf(*object));
    if (auto* circle = qobject_cast<TZEPCircle*>(object)) stream << " in " << circle->Segments();
    if (auto* arc = qobject_cast<TZEPArc*>(object))
        stream << " in " << arc->Segments() << " from " << arc->StartAngle() << " to "
               << arc->EndAngle();
    if (auto* polygon = qobject_cast<TZEPPolygon*>(object)) add(PointsOf(*polygon->Vertexes()));
    if (auto* polyline = qobject_cast<TZEPPolyline*>(object))
        add(PointsOf(*polyline->Vertexes()) + (polyline->Closed() ? " closed" : ""));
    if (auto* mesh = qobject_cast<TZEPMesh*>(object))
        add(PointsOf(*mesh->Vertexes()) + " faces " + FacesOf(*mesh->Faces()));
    return text.toStdString();
}

/// "A/TZEPLine 0 0 0 > 1 0 0 ff0000 @ident", the layer's ident in front.
inline std::string DescribeEntity(TZEPObject* object) {
    const QString parent = object->Parent() ? object->Parent()->Ident() : QStringLiteral("none");
    const QString color = QStringLiteral("%1").arg(object->Color().Value, 6, 16, QLatin1Char('0'));
    std::string text = (parent + u'/' + object->ClassName()).toStdString() + ' ' +
                       GeometryOf(object) + ' ' + color.toStdString();
    if (!object->Ident().isEmpty()) text += " @" + object->Ident().toStdString();
    return text;
}

class DXF : public testing::Test {
protected:
    DXF() {
        Root.SetParentComponent(&Scene);
        Root.SetIdent(QStringLiteral("root"));
        Converter.SetRoot(&Root);
    }

    /// The objects on the layers.
    TTexts Objects() {
        TTexts texts;
        for (int i = 0; i < Root.GetItemsCount(); ++i)
            for (int j = 0; j < Root.GetItem(i)->GetItemsCount(); ++j)
                texts.push_back(DescribeEntity(Root.GetItem(i)->GetItem(j)));
        return texts;
    }
    /// "A ff0000", and "hidden" for one that is not visible.
    TTexts Layers() {
        TTexts texts;
        for (int i = 0; i < Root.GetItemsCount(); ++i) {
            TZEPObject* layer = Root.GetItem(i);
            EXPECT_EQ(layer->ClassName(), QStringLiteral("TZEPActor"));
            texts.push_back(QStringLiteral("%1 %2%3")
                                .arg(layer->Ident())
                                .arg(layer->Color().Value, 6, 16, QLatin1Char('0'))
                                .arg(QLatin1String(layer->Visible() ? "" : " hidden"))
                                .toStdString());
        }
        return texts;
    }
    /// "LWPOLYLINE: 3 @12".
    TTexts Passed() {
        TTexts texts;
        for (const auto& entry : Converter.Report().Entries())
            texts.push_back(QStringLiteral("%1: %2 @%3")
                                .arg(entry.Kind)
                                .arg(entry.Count)
                                .arg(entry.FirstLine)
                                .toStdString());
        return texts;
    }
    TTexts Read(const std::string& pairs) {
        Root.Clear();
        Converter.ReadDXF(Pairs(pairs));
        return Objects();
    }
    /// Of a drawing with the layer A in blue.
    TTexts ReadOnA(const std::string& entities) {
        return Read(LayerTable({"2 A|62 5"}) + Entities(entities));
    }
    std::string ErrorOfReading(std::string_view text) {
        return ErrorOf([&] { Converter.ReadDXF(text); });
    }
    std::string ErrorOfLoading() {
        return ErrorOf([&] { Converter.LoadFromFile(); });
    }
    /// A file of the given content in a folder of the test's own.
    QString Written(const QString& name, const std::string& content) {
        QFile file(Folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content.data(), static_cast<qint64>(content.size()));
        return file.fileName();
    }

    QTemporaryDir Folder;
    TZEPScene Scene;
    TZEPObject Root;
    TDXFConverter Converter;
};

} // namespace ZEP
