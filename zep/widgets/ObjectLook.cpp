#include <zep/widgets/ObjectLook.h>

#include <zep/appearance/effects/Light.h>
#include <zep/appearance/effects/LogicalObject.h>
#include <zep/appearance/effects/Proxy.h>
#include <zep/appearance/materials/FaceMaterial.h>
#include <zep/appearance/materials/Material.h>
#include <zep/batch/Batch.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Box.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Cone.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/HeightField.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/LineSet.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Node.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/objects/Solid.h>
#include <zep/objects/Sphere.h>
#include <zep/objects/Torus.h>
#include <zep/scene/Scene.h>
#include <zep/stock/Workpiece.h>
#include <zep/view/Actor.h>
#include <zep/view/Camera.h>

#include <array>

namespace ZEP {

namespace {

struct TEntry {
    const QMetaObject* Class;
    const char* Kind; ///< null: the name of the class
    const char* Icon;
    bool HasColor = true;
};

/// The most common first.
const TEntry Entries[] = {
    {&TZEPLine::staticMetaObject, "Line", "line"},
    {&TZEPPolyline::staticMetaObject, "Polyline", "polyline"},
    {&TZEPDashedPolyline::staticMetaObject, "Dashed line", "polyline"},
    {&TZEPLineSet::staticMetaObject, "Lines", "line"},
    {&TZEPArc::staticMetaObject, "Arc", "arc"},
    {&TZEPCircle::staticMetaObject, "Circle", "circle"},
    {&TZEPPoint::staticMetaObject, "Point", "point"},
    {&TZEPPolygon::staticMetaObject, "Polygon", "polygon"},
    {&TZEPMesh::staticMetaObject, "Mesh", "mesh"},
    {&TZEPLabel::staticMetaObject, "Text", "text"},
    {&TZEPBox::staticMetaObject, "Box", "box"},
    {&TZEPSphere::staticMetaObject, "Sphere", "sphere"},
    {&TZEPCone::staticMetaObject, "Cone", "cone"},
    {&TZEPTorus::staticMetaObject, "Torus", "torus"},
    {&TZEPSolid::staticMetaObject, nullptr, "solid"},
    {&TZEPHeightField::staticMetaObject, "Height field", "heightfield"},
    {&TZEPWorkpiece::staticMetaObject, "Workpiece", "heightfield"},
    {&TZEPLight::staticMetaObject, "Light", "light"},
    {&TZEPProxy::staticMetaObject, "Proxy", "proxy"},
    {&TZEPLogicalObject::staticMetaObject, "Logical object", "logical"},
    {&TZEPCamera::staticMetaObject, "Camera", "camera", false},
    {&TZEPActor::staticMetaObject, "Actor", "layer"},
    {&TZEPNode::staticMetaObject, "Group", "group", false},
    {&TZEPBatch::staticMetaObject, "Batch", "layer", false},
    {&TZEPScene::staticMetaObject, "Scene", "scene", false},
    {&TZEPColoredObject::staticMetaObject, nullptr, "object"},
    {&TZEPObject::staticMetaObject, "Group", "group", false},
};

/// Of the class itself, or of the nearest that it inherits.
const TEntry& EntryOf(const TZEPObject& object) {
    for (const QMetaObject* type = object.metaObject(); type; type = type->superClass())
        for (const TEntry& entry : Entries)
            if (type == entry.Class) return entry;
    return *(std::end(Entries) - 1);
}

TZEPMaterial* FirstMaterialOf(const TZEPMesh& mesh) {
    auto& faces = *const_cast<TZEPMesh&>(mesh).Faces();
    if (!mesh.ColorFaces() || faces.Count() == 0 || !mesh.Scene()) return nullptr;
    return mesh.Scene()->LibraryMaterial(faces[0].MaterialIndex());
}

} // namespace

QString KindOf(const TZEPObject& object) {
    const TEntry& entry = EntryOf(object);
    if (entry.Kind && object.metaObject() == entry.Class) return QLatin1String(entry.Kind);
    const QString name = object.ClassName();
    return name.startsWith(QLatin1String("TZEP")) ? name.mid(4) : name;
}

QString NameOf(const TZEPObject& object) {
    if (!object.Ident().isEmpty()) return object.Ident();
    const auto* label = qobject_cast<const TZEPLabel*>(&object);
    if (label && !label->Caption().isEmpty()) return label->Caption();
    return object.Name().isEmpty() ? KindOf(object) : object.Name();
}

QIcon ObjectIcon(const TZEPObject& object) {
    static std::array<QIcon, std::size(Entries)> icons;
    const TEntry& entry = EntryOf(object);
    QIcon& icon = icons[static_cast<std::size_t>(&entry - Entries)];
    if (icon.isNull())
        icon = SymbolIcon(QStringLiteral(":/zep/icons/%1.svg").arg(QLatin1String(entry.Icon)));
    return icon;
}

std::optional<TColor> ColorOf(const TZEPObject& object) {
    if (!EntryOf(object).HasColor) return {};
    const auto* mesh = qobject_cast<const TZEPMesh*>(&object);
    TZEPMaterial* material = mesh ? FirstMaterialOf(*mesh) : nullptr;
    return material ? material->FrontFace()->Diffuse() : object.GetColor();
}

} // namespace ZEP
