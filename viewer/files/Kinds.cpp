#include "viewer/files/Kinds.h"

#include "viewer/drawing/FileRoot.h"
#include <zep/appearance/effects/Light.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Node.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Scene.h>
#include <zep/view/Actor.h>
#include <zep/view/Camera.h>

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <array>

namespace ZEP {

namespace {

struct TKindEntry {
    const QMetaObject* Class;
    TKind Kind;
    QString Text;
};

/// The most common first. What inherits stands before what it inherits.
const std::array<TKindEntry, 14>& Entries() {
    static const std::array<TKindEntry, 14> Table{{
        {&TZEPLine::staticMetaObject, TKind::Line, QStringLiteral("Line")},
        {&TZEPPolyline::staticMetaObject, TKind::Polyline, QStringLiteral("Polyline")},
        {&TZEPArc::staticMetaObject, TKind::Arc, QStringLiteral("Arc")},
        {&TZEPCircle::staticMetaObject, TKind::Circle, QStringLiteral("Circle")},
        {&TZEPPoint::staticMetaObject, TKind::Point, QStringLiteral("Point")},
        {&TZEPPolygon::staticMetaObject, TKind::Polygon, QStringLiteral("Polygon")},
        {&TZEPMesh::staticMetaObject, TKind::Mesh, QStringLiteral("Mesh")},
        {&TZEPLabel::staticMetaObject, TKind::Text, QStringLiteral("Text")},
        {&TZEPLight::staticMetaObject, TKind::Light, QStringLiteral("Light")},
        {&TZEPCamera::staticMetaObject, TKind::Camera, QStringLiteral("Camera")},
        {&TZEPActor::staticMetaObject, TKind::Layer, QStringLiteral("Layer")},
        {&TZEPNode::staticMetaObject, TKind::Group, QStringLiteral("Group")},
        {&TFileRoot::staticMetaObject, TKind::File, QStringLiteral("File")},
        {&TZEPObject::staticMetaObject, TKind::Group, QStringLiteral("Group")},
    }};
    return Table;
}

const TKindEntry* EntryOf(const TZEPObject& object) {
    const QMetaObject* type = object.metaObject();
    for (const TKindEntry& entry : Entries())
        if (type == entry.Class) return &entry;
    return nullptr;
}

QPainterPath Through(std::initializer_list<QPointF> points, bool closed) {
    QPainterPath path(*points.begin());
    for (const QPointF& point : points) path.lineTo(point);
    if (closed) path.closeSubpath();
    return path;
}

QPainterPath Ellipse(const QPointF& center, double radius) {
    QPainterPath path;
    path.addEllipse(center, radius, radius);
    return path;
}

/// In a square of 16 by 16.
QPainterPath OutlineOf(TKind kind) {
    switch (kind) {
    case TKind::File:
        return Through({{3.5, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 14.5}, {3.5, 14.5}}, true);
    case TKind::Layer: {
        QPainterPath path = Through({{8, 2.5}, {14.5, 6}, {8, 9.5}, {1.5, 6}}, true);
        path.addPath(Through({{1.5, 10}, {8, 13.5}, {14.5, 10}}, false));
        return path;
    }
    case TKind::Group: {
        QPainterPath path;
        path.addRect(1.5, 4.5, 9, 9);
        path.addPath(
            Through({{4.5, 4.5}, {4.5, 1.5}, {13.5, 1.5}, {13.5, 10.5}, {10.5, 10.5}}, false));
        return path;
    }
    case TKind::Line:
        return Through({{2, 14}, {14, 2}}, false);
    case TKind::Arc: {
        QPainterPath path;
        path.arcMoveTo(-8, 2, 22, 22, 5);
        path.arcTo(-8, 2, 22, 22, 5, 90);
        return path;
    }
    case TKind::Circle:
        return Ellipse({8, 8}, 6);
    case TKind::Polyline:
        return Through({{1.5, 13}, {5.5, 4}, {10, 11}, {14.5, 3}}, false);
    case TKind::Point: {
        QPainterPath path = Through({{8, 3}, {8, 13}}, false);
        path.addPath(Through({{3, 8}, {13, 8}}, false));
        return path;
    }
    case TKind::Polygon:
        return Through({{2, 6}, {9, 2}, {14, 8}, {11, 14}, {4, 13}}, true);
    case TKind::Mesh: {
        QPainterPath path = Through({{2, 13}, {8, 2.5}, {14, 13}}, true);
        path.addPath(Through({{5, 7.75}, {11, 7.75}, {8, 13}}, true));
        return path;
    }
    case TKind::Text: {
        QPainterPath path = Through({{3, 3}, {13, 3}}, false);
        path.addPath(Through({{8, 3}, {8, 14}}, false));
        return path;
    }
    case TKind::Light: {
        QPainterPath path = Ellipse({8, 6.5}, 4.5);
        path.addPath(Through({{6, 13}, {10, 13}}, false));
        path.addPath(Through({{6.5, 15}, {9.5, 15}}, false));
        return path;
    }
    case TKind::Camera: {
        QPainterPath path;
        path.addRect(1.5, 5.5, 8, 6);
        path.addPath(Through({{9.5, 8.5}, {14.5, 5}, {14.5, 12}}, true));
        return path;
    }
    case TKind::Other:
        break;
    }
    return Through({{8, 1.5}, {14.5, 8}, {8, 14.5}, {1.5, 8}}, true);
}

constexpr int Side = 16;

template <class Paint>
QIcon Draw(Paint&& paint) {
    const qreal ratio = qApp->devicePixelRatio();
    QPixmap pixmap((QSizeF(Side, Side) * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return pixmap;
}

TZEPMaterial* FirstMaterialOf(TZEPMesh& mesh) {
    if (!mesh.ColorFaces() || mesh.Faces()->Count() == 0 || !mesh.Scene()) return nullptr;
    return mesh.Scene()->LibraryMaterial((*mesh.Faces())[0].MaterialIndex());
}

} // namespace

TKind KindOf(const TZEPObject& object) {
    const TKindEntry* entry = EntryOf(object);
    return entry ? entry->Kind : TKind::Other;
}

QString KindText(const TZEPObject& object) {
    if (const TKindEntry* entry = EntryOf(object)) return entry->Text;
    return QString::fromLatin1(object.metaObject()->className()).section(QLatin1Char(':'), -1);
}

QString NameOf(const TZEPObject& object) {
    if (!object.Ident().isEmpty()) return object.Ident();
    const auto* label = qobject_cast<const TZEPLabel*>(&object);
    return label && !label->Caption().isEmpty() ? label->Caption() : KindText(object);
}

QIcon KindIcon(TKind kind) {
    static std::array<QIcon, static_cast<std::size_t>(TKind::Other) + 1> icons;
    QIcon& icon = icons[static_cast<std::size_t>(kind)];
    if (!icon.isNull()) return icon;
    return icon = Draw([kind](QPainter& painter) {
               painter.setPen(QPen(QApplication::palette().color(QPalette::Text), 1.3));
               painter.drawPath(OutlineOf(kind));
           });
}

QIcon ColorIcon(TColor color) {
    return Draw([color](QPainter& painter) {
        painter.setPen(QPen(QApplication::palette().color(QPalette::Mid), 1));
        painter.setBrush(ToQColor(color));
        painter.drawRoundedRect(QRectF(2.5, 2.5, Side - 5, Side - 5), 2, 2);
    });
}

std::optional<TColor> ColorOf(TZEPObject& object) {
    const TKind kind = KindOf(object);
    if (kind == TKind::File || kind == TKind::Group || kind == TKind::Camera) return {};
    auto* mesh = qobject_cast<TZEPMesh*>(&object);
    TZEPMaterial* material = mesh ? FirstMaterialOf(*mesh) : nullptr;
    return material ? material->FrontFace()->Diffuse() : object.GetColor();
}

} // namespace ZEP
