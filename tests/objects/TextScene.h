#pragma once

#include "tests/Words.h"
#include "tests/framework/stream/Fields.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/framework/Registry.h>
#include <zep/scene/ForEach.h>

#include <gmock/gmock.h>

#include <map>

namespace ZEP {

/// Where the commands begin behind a stream: each is a line that begins with "> ".
inline std::size_t CommandsIn(const std::string& input) {
    return input.find("\n> ") + 1;
}

/// A scene that a component stream tells, with a library for it beside it, and what is done to it.
class TTextScene {
public:
    explicit TTextScene(const std::string& stream) {
        Library.SetName(QStringLiteral("Library"));
        Owner.InsertComponent(&Library);
        Owner.InsertComponent(&Scene);
        EXPECT_THAT(LoadInto(Scene, stream), testing::IsEmpty()) << stream;
        Complete(Scene);
        ForEachObject(Scene, [](TZEPObject& object) { Complete(object); });
    }
    ~TTextScene() {
        Owner.RemoveComponent(&Scene);
        Owner.RemoveComponent(&Library);
    }
    Q_DISABLE_COPY_MOVE(TTextScene)

    TZEPObject& Object(const std::string& name) {
        auto* object = qobject_cast<TZEPObject*>(Scene.FindComponent(QString::fromStdString(name)));
        EXPECT_TRUE(object || name == Scene.Name().toStdString()) << name;
        return object ? *object : Scene;
    }
    /// Sets published properties, told as in a stream: `Width = 3 Height = 2`. Values of several
    /// words are read as one, which resets what streams leave out.
    void Set(const std::string& name, const std::string& values) {
        TComponent& component =
            name == "Library" ? static_cast<TComponent&>(Library) : Object(name);
        if (values.find_first_of("{<'") != std::string::npos) return Read(component, name, values);
        std::string closed = values; // a set is one word
        for (std::size_t at; (at = closed.find(", ")) != std::string::npos;)
            closed.erase(at + 1, 1);
        const TWords words(". " + closed);
        for (std::size_t i = 1; i + 2 < words.Count(); i += 3)
            SetValue(TInstance(&component), words.At(i), words.At(i + 2));
    }

    TComponent Owner;
    TZEPMaterialLibrary Library;
    TZEPScene Scene;

private:
    static void Read(TComponent& component, const std::string& name, const std::string& values) {
        const std::string stream =
            "object " + name + ": " + component.ClassName().toStdString() + " " + values + " end";
        EXPECT_THAT(LoadInto(component, stream), testing::IsEmpty()) << stream;
        if (auto* object = qobject_cast<TZEPObject*>(&component)) Complete(*object);
    }
    void SetValue(const TInstance& instance, const std::string& path, const std::string& value) {
        const auto dot = path.find('.');
        const TField* field = TClassLayout::Of(*instance.Type).Find(path.substr(0, dot));
        ASSERT_TRUE(field) << path;
        if (dot != std::string::npos)
            return SetValue(TInstance(field->SubObject(instance)), path.substr(dot + 1), value);
        if (field->Kind() == TFieldKind::Single || field->Kind() == TFieldKind::Double)
            return field->SetFloat(instance, NumberOf(value));
        if (field->Kind() == TFieldKind::Reference)
            return field->SetReference(instance, value == "Library" ? &Library
                                                 : value == "nil"
                                                     ? static_cast<TComponent*>(nullptr)
                                                     : &Object(value));
        EXPECT_TRUE(field->SetOrdinal(instance, OrdinalOf(*field, value))) << path;
    }
    static qint64 OrdinalOf(const TField& field, const std::string& value) {
        if (value == "True" || value == "False") return value == "True" ? 1 : 0;
        if (const auto color = ColorByName(value)) return color->Value;
        if (value.starts_with('[')) {
            qint64 all = 0;
            std::istringstream names(value.substr(1, value.size() - 2));
            for (std::string one; std::getline(names, one, ',');) all |= *field.ValueOf(one);
            return all;
        }
        return field.ValueOf(value).value_or(QByteArray::fromStdString(value).toLongLong());
    }
    /// Numbers that a stream does not tell are 0: these scenes mean those of a new object.
    static void Complete(TZEPObject& object) {
        const auto* entry = TClassRegistry::Instance().Find(object.ClassName());
        TComponent owner;
        std::map<std::string, double> initial;
        const auto isNumber = [](const TField& field) {
            return field.Kind() == TFieldKind::Single || field.Kind() == TFieldKind::Double;
        };
        ForEachField(TInstance(entry->Make(&owner)),
                     [&](const std::string& path, const TField& field, const TInstance& in) {
                         if (isNumber(field)) initial[path] = field.Float(in);
                     });
        ForEachField(TInstance(&object),
                     [&](const std::string& path, const TField& field, const TInstance& in) {
                         const auto first = initial.find(path);
                         if (first != initial.end() && first->second != 0 && field.Float(in) == 0)
                             field.SetFloat(in, first->second);
                     });
    }
};

} // namespace ZEP
