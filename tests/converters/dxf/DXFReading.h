#pragma once

#include "tests/converters/dxf/DXFPairs.h"
#include <zep/converters/dxf/Converter.h>
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
#include <zep/scene/Vertex3.h>

#include <cmath>
#include <string>
#include <vector>

namespace ZEP {

using TLines = std::vector<std::string>;

inline std::string Section(std::string_view name, std::string_view compact) {
    return "0\nSECTION\n2\n" + std::string(name) + "\n" + Pairs(compact) + "0\nENDSEC\n";
}

/// A drawing of a layer table, blocks and entities.
inline std::string Drawing(std::string_view entities, std::string_view blocks = {},
                           std::string_view layers = {}) {
    std::string table = "0 TABLE|2 LAYER|";
    table += layers;
    table += layers.empty() ? "0 ENDTAB" : "|0 ENDTAB";
    return Section("TABLES", table) + Section("BLOCKS", blocks) + Section("ENTITIES", entities) +
           "0\nEOF\n";
}

/// Four digits, and no minus sign before a zero.
inline std::string Shown(double value) {
    return QByteArray::number(std::abs(value) < 1e-9 ? 0 : value, 'g', 4).toStdString();
}

inline std::string Shown(const TGLArrayd3& point) {
    std::string text = "(";
    text += Shown(point[0]) + " " + Shown(point[1]) + " " + Shown(point[2]);
    return text + ")";
}

/// What a drawing became, in coordinates of the scene.
class DXFReading {
public:
    explicit DXFReading(std::string_view text, bool extended = true) {
        m_converter.SetRoot(&Scene);
        m_converter.SetExtended(extended);
        m_converter.ReadDXF(text);
    }

    TZEPScene Scene;

    /// Of each object its shape, with its layer in front where that is not "0"; "hidden" where it
    /// or anything above it is.
    [[nodiscard]] TLines Shapes() {
        TLines shapes;
        Walk(Scene, shapes, {});
        return shapes;
    }
    /// Idents from the layer down to each object that has no children.
    [[nodiscard]] TLines Paths() {
        TLines paths;
        WalkPaths(Scene, paths, {});
        return paths;
    }
    [[nodiscard]] TLines Passed() const {
        TLines passed;
        for (const auto& entry : m_converter.Report().Entries())
            passed.push_back(entry.Kind.toStdString() + " " + std::to_string(entry.Count));
        return passed;
    }
    [[nodiscard]] const TDXFConverter& Converter() const { return m_converter; }

    static TGLArrayd3 Absolute(const TZEPObject& object, const TGLArrayd3& point) {
        TGLArrayd3 result;
        object.ConvertToAbsolute(point, result);
        return result;
    }

private:
    static bool IsHidden(const TZEPObject& object) {
        for (const TZEPObject* o = &object; o; o = o->Parent())
            if (!o->Visible()) return true;
        return false;
    }

    static void Walk(TZEPObject& parent, TLines& shapes, const std::string& layer) {
        for (int i = 0; i < parent.GetItemsCount(); ++i) {
            TZEPObject& object = *parent.GetItem(i);
            const std::string name = layer.empty() ? object.Ident().toStdString() : layer;
            const std::string shape = ShapeOf(object);
            if (!shape.empty())
                shapes.push_back((name == "0" ? "" : name + ": ") + shape +
                                 (IsHidden(object) ? " hidden" : ""));
            Walk(object, shapes, name);
        }
    }

    static void WalkPaths(TZEPObject& parent, TLines& paths, const std::string& above) {
        for (int i = 0; i < parent.GetItemsCount(); ++i) {
            TZEPObject& object = *parent.GetItem(i);
            const bool isLeaf = !ShapeOf(object).empty();
            const std::string path =
                above + "/" + (isLeaf ? object.ClassName() : object.Ident()).toStdString();
            if (isLeaf) paths.push_back(path);
            WalkPaths(object, paths, path);
        }
    }

    template <class TVertexList>
    static std::string PointsOf(const TZEPObject& object, TVertexList& vertexes) {
        std::string text;
        for (int i = 0; i < vertexes.Count(); ++i)
            if (i < 4 || i + 1 == vertexes.Count())
                text.append(" ").append(Shown(Absolute(object, vertexes[i].Data())));
        return text;
    }

    static std::string ShapeOf(TZEPObject& object) {
        const auto at = [&object](const TGLArrayd3& point) {
            return std::string(" ").append(Shown(Absolute(object, point)));
        };
        if (auto* point = qobject_cast<TZEPPoint*>(&object))
            return "point" + at(point->P()->Data());
        if (auto* line = qobject_cast<TZEPLine*>(&object))
            return "line" + at(line->P1()->Data()) + at(line->P2()->Data());
        if (auto* arc = qobject_cast<TZEPArc*>(&object))
            return "arc" + at({0, 0, 0}) + at({0.5, 0, 0}) + at({0, 0.5, 0}) + " " +
                   Shown(arc->StartAngle()) + " " + Shown(arc->EndAngle());
        if (qobject_cast<TZEPCircle*>(&object))
            return "circle" + at({0, 0, 0}) + at({0.5, 0, 0}) + at({0, 0.5, 0});
        if (auto* chain = qobject_cast<TZEPPolyline*>(&object))
            return (chain->Closed() ? "ring " : "chain ") +
                   std::to_string(chain->Vertexes()->Count()) +
                   PointsOf(object, *chain->Vertexes());
        if (auto* polygon = qobject_cast<TZEPPolygon*>(&object))
            return "polygon" + PointsOf(object, *polygon->Vertexes());
        if (auto* mesh = qobject_cast<TZEPMesh*>(&object))
            return "mesh " + std::to_string(mesh->Vertexes()->Count()) + " " +
                   std::to_string(mesh->Faces()->Count()) + PointsOf(object, *mesh->Vertexes());
        if (auto* label = qobject_cast<TZEPLabel*>(&object))
            return "label " + label->Caption().toStdString() + at({0, 0, 0}) + at({1, 0, 0}) +
                   at({0, 1, 0});
        return {};
    }

    TDXFConverter m_converter;
};

} // namespace ZEP
