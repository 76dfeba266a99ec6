#include "tests/Cases.h"
#include "tests/framework/stream/Subject.h"
#include <zep/framework/Exception.h>
#include <zep/scene/Scene.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <map>
#include <set>

namespace ZEP {
namespace {

/// Counts how often the scene of an object wants to be drawn again.
class TListening : public TZEPScenePanel {
public:
    explicit TListening(TZEPObject* object) : m_object(object) {
        auto* own = qobject_cast<TZEPScene*>(object);
        m_scene = own ? own : &m_root;
        m_scene->RegisterGLPanel(this);
        if (object && !own) object->SetParentComponent(m_scene);
    }
    ~TListening() {
        if (m_object && m_scene == &m_root) m_object->SetParentComponent(nullptr);
        m_scene->UnregisterGLPanel(this);
    }
    Q_DISABLE_COPY_MOVE(TListening)

    void Invalidate() override { ++m_count; }
    void SceneDestroyed() override {}
    int Taken() { return std::exchange(m_count, 0); }

private:
    TZEPObject* m_object;
    TZEPScene m_root;
    TZEPScene* m_scene = nullptr;
    int m_count = 0;
};

void SetAgain(const TField& field, const TInstance& instance) {
    switch (field.Kind()) {
    case TFieldKind::Single:
    case TFieldKind::Double:
        return field.SetFloat(instance, field.Float(instance));
    case TFieldKind::String:
        return field.SetString(instance, field.String(instance));
    case TFieldKind::Reference:
        return field.SetReference(instance, field.Reference(instance));
    case TFieldKind::SubObject:
    case TFieldKind::Collection:
    case TFieldKind::Unknown:
        return;
    default:
        EXPECT_TRUE(field.SetOrdinal(instance, field.Ordinal(instance)));
    }
}

std::string TextOf(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

/// The numbers that the property does not keep, with what it keeps in their place.
std::string Limits(const TField& field, const TInstance& instance) {
    constexpr double endless = std::numeric_limits<double>::infinity();
    const bool isFloat = field.Kind() == TFieldKind::Single || field.Kind() == TFieldKind::Double;
    if (!isFloat && field.Kind() != TFieldKind::Integer) return {};
    std::vector<double> values{INT_MIN, -1, 0, 1, 7, 180, 250, INT_MAX};
    if (isFloat) values.insert(values.end(), {0.5, -endless, endless, std::nan("")});
    std::string text;
    for (const double value : values) {
        if (isFloat)
            field.SetFloat(instance, value);
        else if (!field.SetOrdinal(instance, static_cast<qint64>(value)))
            continue;
        const std::string kept = isFloat ? TextOf(field.Float(instance))
                                         : TextOf(static_cast<double>(field.Ordinal(instance)));
        const std::string given = TextOf(isFloat ? static_cast<float>(value) : value);
        if (kept != given) text += ", " + given + " is " + kept;
    }
    return text;
}

std::string NamesOf(const TInstance& instance) {
    std::string names;
    for (const TField& field : TClassLayout::Of(*instance.Type).Fields())
        names += " " + std::string(field.Name());
    return names;
}

std::string KeysOf(const QMetaEnum& names) {
    std::string keys;
    for (int i = 0; i < names.keyCount(); ++i)
        keys += std::string(" ") + names.key(i) + "=" + std::to_string(names.value(i));
    return keys;
}

/// What an object takes over of another by `Assign`.
std::string CopiedByAssign(const std::string& name) {
    TSubject original(QString::fromStdString(name));
    AlterAll(original);
    TSubject copy(QString::fromStdString(name));
    const std::vector<std::string> before = ValuesOf(*copy.Component);
    try {
        copy.Component->Assign(original.Component);
    } catch (const Exception& error) {
        return ": " + error.Message().toStdString();
    }
    const std::vector<std::string> all = ValuesOf(*original.Component);
    std::string copied;
    for (const std::string& value : ValuesOf(*copy.Component))
        if (std::ranges::count(all, value) > 0 && std::ranges::count(before, value) == 0)
            copied += " " + value.substr(0, value.find(' '));
    return copied;
}

class TDescription {
public:
    /// What is published of the class, of its parts and items, but for what was told before of an
    /// ancestor: names in order; the initial value; how often a new value repaints, and the same
    /// again; the numbers that are not kept.
    std::string Of(const std::string& name) {
        TSubject subject(QString::fromStdString(name));
        const auto* entry = TClassRegistry::Instance().Find(QString::fromStdString(name));
        std::string text =
            "in " + entry->Group.toStdString() + ":" + NamesOf(TInstance(subject.Component)) + "\n";
        text += "Assign copies" + CopiedByAssign(name) + "\n";
        const std::map<std::string, std::string> initial = InitialOf(name);
        TListening panel(qobject_cast<TZEPObject*>(subject.Component));
        ForEachField(TInstance(subject.Component), [&](const std::string& path, const TField& field,
                                                       const TInstance& instance) {
            const auto first = initial.find(path);
            const std::string value =
                first == initial.end() ? Shown(field, instance) : first->second;
            if (!m_told.insert(Declaring(*subject.Component, path) + path + value).second) return;
            text += path + " = " + value;
            if (field.Kind() == TFieldKind::SubObject)
                text += ":" + NamesOf(TInstance(field.SubObject(instance)));
            if (field.Kind() == TFieldKind::Enumeration || field.Kind() == TFieldKind::Set)
                text += " of" + KeysOf(field.Names());
            text += Told(subject, field, instance, panel) + "\n";
        });
        TSubject bounded(QString::fromStdString(name));
        ForEachField(TInstance(bounded.Component),
                     [&](const std::string& path, const TField& field, const TInstance& instance) {
                         if (!field.IsStored()) return;
                         if (!m_bounded.insert(Declaring(*bounded.Component, path) + path).second)
                             return;
                         const std::string limits = Limits(field, instance);
                         if (!limits.empty()) text += "of " + path + limits + "\n";
                     });
        return text;
    }

private:
    static std::string Shown(const TField& field, const TInstance& instance) {
        if (field.Kind() != TFieldKind::Color) return ValueOf(field, instance);
        return "$" + QByteArray::number(field.Ordinal(instance), 16).toStdString();
    }
    static std::string Told(const TSubject& subject, const TField& field, const TInstance& instance,
                            TListening& panel) {
        if (!field.IsStored()) return " (not stored)";
        if (field.Kind() == TFieldKind::SubObject) return {};
        panel.Taken();
        Alter(subject, field, instance);
        std::string text = "; " + std::to_string(panel.Taken());
        SetAgain(field, instance);
        if (const int again = panel.Taken()) text += ", again " + std::to_string(again);
        return text;
    }
    static std::map<std::string, std::string> InitialOf(const std::string& name) {
        TSubject fresh(QString::fromStdString(name));
        std::map<std::string, std::string> values;
        ForEachField(TInstance(fresh.Component),
                     [&](const std::string& path, const TField& field, const TInstance& instance) {
                         values[path] = Shown(field, instance);
                     });
        return values;
    }
    /// The class that publishes the first part of the path.
    static std::string Declaring(const TComponent& component, const std::string& path) {
        const QMetaObject* type = component.metaObject();
        const std::string name = path.substr(0, path.find_first_of(".["));
        while (type->superClass() && type->superClass()->indexOfProperty(name.c_str()) >= 0)
            type = type->superClass();
        return type->className() + std::string(" ");
    }

    std::set<std::string> m_told, m_bounded;
};

TEST(Published, ClassesAreAsTheyAreWrittenDown) {
    std::vector<std::string> names;
    for (const TCase& c : ReadCases(ZEP_TEST_DATA "/cases/text/published.txt"))
        names.push_back(c.Name);
    EXPECT_EQ(names, RegisteredClasses()) << "a class without a case";
    TDescription description;
    ExpectCases("text/published.txt", [&](const TCase& c) { return description.Of(c.Name); });
}

} // namespace
} // namespace ZEP
