#pragma once

#include "tests/framework/stream/Fields.h"
#include <zep/converters/ReadReport.h>
#include <zep/framework/Registry.h>
#include <zep/scene/Object.h>
#include <zep/scene/XForm.h>

#include <cmath>
#include <memory>

namespace ZEP {

inline std::string NumberText(double value) {
    return QByteArray::number(std::abs(value) < 1e-9 ? 0 : value, 'g', 6).toStdString();
}

inline std::string PointText(const TGLArrayd3& point) {
    return "(" + NumberText(point[0]) + " " + NumberText(point[1]) + " " + NumberText(point[2]) +
           ")";
}

/// " Path=value" for each stored value in which an instance differs from a new one.
inline std::string Differences(const TInstance& instance, const TInstance& fresh);

inline std::string ItemDifferences(TCollection& items, TCollection& fresh) {
    constexpr int shown = 12;
    TCollectionItem* standard = fresh.Add();
    std::string text;
    for (int i = 0; i < items.Count(); ++i)
        if (i < shown || i + 1 == items.Count())
            text += " [" + std::to_string(i) +
                    Differences(TInstance(items.GetItem(i)), TInstance(standard)) + "]";
    return text;
}

inline std::string FieldText(const TField& field, const TInstance& instance) {
    switch (field.Kind()) {
    case TFieldKind::Single:
    case TFieldKind::Double:
        return NumberText(field.Float(instance));
    case TFieldKind::Color:
        return QString::number(static_cast<quint32>(field.Ordinal(instance)), 16).toStdString();
    case TFieldKind::String:
        return "'" + field.String(instance).toStdString() + "'";
    default:
        return ValueOf(field, instance);
    }
}

inline std::string Differences(const TInstance& instance, const TInstance& fresh) {
    std::string text;
    for (const TField& field : TClassLayout::Of(*instance.Type).Fields()) {
        if (!field.IsStored()) continue;
        const std::string name(field.Name());
        if (field.Kind() == TFieldKind::SubObject) {
            const std::string inner = Differences(TInstance(field.SubObject(instance)),
                                                  TInstance(field.SubObject(fresh)));
            if (!inner.empty()) text += " " + name + "{" + inner.substr(1) + "}";
        } else if (field.Kind() == TFieldKind::Collection) {
            text += ItemDifferences(*static_cast<TCollection*>(field.SubObject(instance)),
                                    *static_cast<TCollection*>(field.SubObject(fresh)));
        } else if (const std::string value = FieldText(field, instance);
                   value != FieldText(field, fresh)) {
            text += " " + name + "=" + value;
        }
    }
    return text;
}

inline void Erase(std::string& text, const std::string& part) {
    if (const auto at = text.find(part); at != std::string::npos) text.erase(at, part.size());
}

/// What makes a component another one than a new one of its class, without its transform: where an
/// object stands is told in the coordinates of the scene. Nor is told that its material has its
/// colour.
inline std::string DifferencesOf(TComponent& component) {
    const std::unique_ptr<TComponent> fresh(
        TClassRegistry::Instance().Find(component.ClassName())->Make(nullptr));
    std::string text = Differences(TInstance(&component), TInstance(fresh.get()));
    auto* object = qobject_cast<TZEPObject*>(&component);
    if (!object) return text;
    Erase(text, " XForm{" +
                    Differences(TInstance(object->XForm()),
                                TInstance(static_cast<TZEPObject&>(*fresh).XForm()))
                        .erase(0, 1) +
                    "}");
    const std::string color =
        QString::number(static_cast<quint32>(object->Color().Value), 16).toStdString();
    const std::string both = "{Ambient=" + color + " Diffuse=" + color + "}";
    Erase(text, " Material{BackFace" + both + " FrontFace" + both + "}");
    return text;
}

/// The place of the origin, and of one unit along each axis, unless all is where it stands.
inline std::string PlaceText(const TZEPObject& object) {
    constexpr TGLArrayd3 places[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    std::string text;
    bool isMoved = false;
    for (const TGLArrayd3& place : places) {
        TGLArrayd3 there;
        object.ConvertToAbsolute(place, there);
        isMoved |= PointText(there) != PointText(place);
        text += " " + PointText(there);
    }
    return isMoved ? " at" + text : "";
}

/// The tree below an object, a line each: what was read, as far as it differs from what is new.
inline std::string TreeText(const TZEPObject& root, const std::string& indent = {}) {
    std::string text;
    for (int i = 0; i < root.GetItemsCount(); ++i) {
        TZEPObject& object = *root.GetItem(i);
        text += indent + object.ClassName().toStdString() + PlaceText(object) +
                DifferencesOf(object) + "\n" + TreeText(object, indent + "  ");
    }
    return text;
}

/// "passed over: HATCH 2 @25"
inline std::string ReportText(const TReadReport& report) {
    std::string text;
    for (const auto& entry : report.Entries())
        text += "passed over: " + entry.Kind.toStdString() + " " + std::to_string(entry.Count) +
                (entry.FirstLine ? " @" + std::to_string(entry.FirstLine) : "") + "\n";
    return text;
}

} // namespace ZEP
