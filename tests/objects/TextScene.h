#pragma once

#include "tests/Cases.h"
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

/// A scene that a component stream tells, with a library for it beside it, under commands:
///
///     > set Box1 SlicesX = 3           published properties; also of "Library"
///     > smooth Mesh1                   what only some classes publish; also `outline`
///     > receives Proxy1                shadows, or `off`; the same of `selectable` and
///     > select Box1
///     > xform Box1                     makes it, as does `material`
///     > vertex Mesh1 0 to 1 2 3        moves one
///     > face Mesh1 0 to 0 1 2 of 1     sets or adds one, with its material; or `gone`
///     > hold Mesh1                     the news of its vertexes and faces, until `let-go`
///     > clear Mesh1                    of its vertexes
///     > transparency 0 0.5             of a material of the library, added where it lacks
///     > under Box1 Group1              its parent from now on; `first`, or behind all others
///     > move Box1 2                    among its neighbours
///     > rename Box1 Box2
///     > free Box1
///     > begin Box1                     a bracket of updates, to `end` or `end-all`
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
            Visit(TInstance(&component), words.At(i),
                  [&](auto& field, auto& instance) { SetValue(field, instance, words.At(i + 2)); });
    }

    /// \param command  without what it begins with, "> "; others do nothing
    void Edit(const TWords& words, const std::string& command) {
        const std::string verb = words.Verb(), name = words.At(1);
        if (verb == "set") return Set(name, command.substr(verb.size() + name.size() + 2));
        if (verb == "transparency")
            return MaterialAt(words.Int(1)).SetTransparency(static_cast<float>(words.Number(2)));
        using TEdit = void (*)(TTextScene&, TZEPObject&, const TWords&);
        static const std::map<std::string, TEdit> edits{
            {"smooth", [](auto&, TZEPObject& o, auto&) { o.SetSmooth(true); }},
            {"outline", [](auto&, TZEPObject& o, auto&) { o.SetDrawType(dtLine); }},
            {"receives", [](auto&, auto& o, auto& w) { o.SetShadows(1, w.At(2) != "off"); }},
            {"selectable", [](auto&, auto& o, auto& w) { o.SetSelectable(w.At(2) != "off"); }},
            {"select", [](auto&, auto& o, auto& w) { o.SetSelected(w.At(2) != "off"); }},
            {"material", [](auto&, auto& o, auto&) { static_cast<void>(o.Material()); }},
            {"xform", [](auto&, auto& o, auto&) { static_cast<void>(o.XForm()); }},
            {"free", [](auto&, TZEPObject& o, auto&) { delete &o; }},
            {"begin", [](auto&, TZEPObject& o, auto&) { o.BeginUpdate(); }},
            {"end", [](auto&, TZEPObject& o, auto&) { o.EndUpdate(); }},
            {"end-all", [](auto&, TZEPObject& o, auto&) { o.EndUpdate(true); }},
            {"move", [](auto&, TZEPObject& o, auto& w) { o.SetItemIndex(w.Int(2)); }},
            {"rename",
             [](auto&, TZEPObject& o, auto& w) { o.SetName(QString::fromStdString(w.At(2))); }},
            {"under",
             [](TTextScene& scene, TZEPObject& o, auto& w) {
                 o.SetParentComponentExt(&scene.Object(w.At(2)), !w.Has("first"));
             }},
            {"clear", [](auto&, TZEPObject& o, auto&) { VertexesOf(o).Clear(); }},
            {"vertex",
             [](auto&, TZEPObject& o, auto& w) {
                 VertexesOf(o).Item(w.Int(2))->SetPoint({w.Number(4), w.Number(5), w.Number(6)});
             }},
            {"face", [](auto&, TZEPObject& o,
                        auto& w) { SetFace(*dynamic_cast<TZEPMesh&>(o).Faces(), w); }},
            {"hold", Hold},
            {"let-go", Hold}};
        if (const auto edit = edits.find(verb); edit != edits.end())
            edit->second(*this, Object(name), words);
    }

    /// Of a published property, as streams tell it.
    std::string Get(const std::string& name, const std::string& path) {
        std::string value;
        Visit(TInstance(&Object(name)), path,
              [&](auto& field, auto& instance) { value = ValueOf(field, instance); });
        return value;
    }

    TComponent Owner;
    TZEPMaterialLibrary Library;
    TZEPScene Scene;

private:
    TZEPMaterial& MaterialAt(int number) {
        while (Library.Materials()->Count() <= number) Library.Materials()->Add();
        return *Library.Materials()->Item(number)->Material();
    }
    static TZEPTexVertexes& VertexesOf(TZEPObject& object) {
        auto* mesh = qobject_cast<TZEPMesh*>(&object);
        return mesh ? *mesh->Vertexes() : *dynamic_cast<TZEPPolygon&>(object).Vertexes();
    }
    static void SetFace(TZEPFaces& faces, const TWords& words) {
        const int number = words.Int(2);
        if (words.Has("gone")) return faces.Delete(number);
        TZEPFace3CI* face = number < faces.Count() ? faces.Item(number) : faces.Add();
        for (int corner = 0; corner < 3; ++corner)
            face->SetData(corner, words.Int(static_cast<std::size_t>(corner) + 4));
        if (words.Has("of")) face->SetMaterialIndex(words.Int(words.After("of")));
    }
    static void Hold(TTextScene& /*scene*/, TZEPObject& object, const TWords& words) {
        auto& mesh = dynamic_cast<TZEPMesh&>(object);
        for (TCollection* items :
             {static_cast<TCollection*>(mesh.Faces()), static_cast<TCollection*>(mesh.Vertexes())})
            words.Verb() == "hold" ? items->BeginUpdate() : items->EndUpdate();
    }
    static void Read(TComponent& component, const std::string& name, const std::string& values) {
        const std::string stream =
            "object " + name + ": " + component.ClassName().toStdString() + " " + values + " end";
        EXPECT_THAT(LoadInto(component, stream), testing::IsEmpty()) << stream;
        if (auto* object = qobject_cast<TZEPObject*>(&component)) Complete(*object);
    }
    using TVisitor = std::function<void(const TField& field, const TInstance& instance)>;

    /// The field at the end of a path.
    static void Visit(const TInstance& instance, const std::string& path, const TVisitor& visit) {
        const auto dot = path.find('.');
        const TField* field = TClassLayout::Of(*instance.Type).Find(path.substr(0, dot));
        ASSERT_TRUE(field) << path;
        if (dot == std::string::npos) return visit(*field, instance);
        Visit(TInstance(field->SubObject(instance)), path.substr(dot + 1), visit);
    }
    void SetValue(const TField& field, const TInstance& instance, const std::string& value) {
        if (field.Kind() == TFieldKind::Single || field.Kind() == TFieldKind::Double)
            return field.SetFloat(instance, NumberOf(value));
        if (field.Kind() == TFieldKind::Reference)
            return field.SetReference(instance, value == "Library" ? &Library
                                                : value == "nil" ? static_cast<TComponent*>(nullptr)
                                                                 : &Object(value));
        EXPECT_TRUE(field.SetOrdinal(instance, OrdinalOf(field, value))) << value;
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
    /// Numbers that a stream does not tell are 0: these scenes mean those of a new object. A
    /// material that nobody has told of is not made.
    static void Complete(TZEPObject& object) {
        TComponent owner;
        const auto* entry = TClassRegistry::Instance().Find(object.ClassName());
        ForEachField(TInstance(entry->Make(&owner)), [&](const std::string& path,
                                                         const TField& field, const TInstance& in) {
            if (field.Kind() != TFieldKind::Single && field.Kind() != TFieldKind::Double) return;
            const double initial = field.Float(in);
            if (initial == 0) return;
            if (path.starts_with("Material.") && !object.HasOwnMaterial()) return;
            Visit(TInstance(&object), path, [initial](auto& own, auto& instance) {
                if (own.Float(instance) == 0) own.SetFloat(instance, initial);
            });
        });
    }
};

/// What each command of a case answers, `Do` of such a scene without its "> ".
template <class TScene, class... TArguments>
std::string Answers(const TCase& c, const TArguments&... arguments) {
    const auto first = CommandsIn(c.Input);
    TScene scene(c.Input.substr(0, first), arguments...);
    return EachLine({c.Name, c.Input.substr(first), {}},
                    [&](const std::string& line) { return scene.Do(line.substr(2)); });
}

} // namespace ZEP
