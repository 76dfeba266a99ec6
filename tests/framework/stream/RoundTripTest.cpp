#include "tests/framework/stream/Fields.h"

#include <zep/framework/Registry.h>
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>

#include <gmock/gmock.h>

#include <QImage>

#include <set>

namespace ZEP {
namespace {

/// One component of a registered class, and whatever it may refer to.
class TSubject {
public:
    explicit TSubject(const QString& className) {
        const TClassRegistry& registry = TClassRegistry::Instance();
        Component = registry.Find(className)->Make(&m_owner);
        for (const QString& name : registry.ClassNames()) {
            m_targets.push_back(registry.Find(name)->Make(&m_owner));
            m_targets.back()->SetName(QStringLiteral("Target_") + name);
        }
    }

    /// Some component that a property may refer to.
    [[nodiscard]] TComponent* Target(const QMetaObject& type) const {
        for (TComponent* target : m_targets)
            if (target->metaObject()->inherits(&type)) return target;
        return nullptr;
    }

    TComponent* Component;

private:
    TComponent m_owner;
    std::vector<TComponent*> m_targets;
};

QByteArray SampleOf(const std::string& name) {
    if (name == "Matrix") {
        TZEPXForm transform({}, nullptr);
        transform.mTranslate(1, 2, 3);
        return transform.StoreMatrix();
    }
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "PNG");
    return png;
}

void AlterEnumeration(const TField& field, const TInstance& instance) {
    const qint64 old = field.Ordinal(instance);
    for (int i = 0; i < field.Names().keyCount(); ++i)
        if (field.Names().value(i) != old) {
            EXPECT_TRUE(field.SetOrdinal(instance, field.Names().value(i)));
            return;
        }
}

/// Gives a property another value than it has.
void Alter(const TSubject& subject, const TField& field, const TInstance& instance) {
    static int color = 0;
    switch (field.Kind()) {
    case TFieldKind::Boolean:
        EXPECT_TRUE(field.SetOrdinal(instance, 1 - field.Ordinal(instance)));
        break;
    case TFieldKind::Integer:
        EXPECT_TRUE(field.SetOrdinal(instance, field.Ordinal(instance) + 5));
        break;
    case TFieldKind::Color:
        // No two the same: a colour also sets those of the material.
        EXPECT_TRUE(field.SetOrdinal(instance, field.Ordinal(instance) ^ (0x102030 + ++color)));
        break;
    case TFieldKind::Enumeration:
    case TFieldKind::Set:
        AlterEnumeration(field, instance);
        break;
    case TFieldKind::Single:
    case TFieldKind::Double:
        field.SetFloat(instance, field.Float(instance) + 0.8125);
        break;
    case TFieldKind::String:
        field.SetString(instance, QStringLiteral("it's \u00E9\n"));
        break;
    case TFieldKind::Reference:
        field.SetReference(instance, subject.Target(*field.Type()));
        break;
    case TFieldKind::Collection:
        static_cast<TCollection*>(field.SubObject(instance))->Add();
        static_cast<TCollection*>(field.SubObject(instance))->Add();
        break;
    case TFieldKind::SubObject: {
        TDefinedProperties defined(
            [](const std::string& name, const auto& read, const auto&) { read(SampleOf(name)); });
        field.SubObject(instance)->DefineProperties(defined);
        break;
    }
    case TFieldKind::Unknown:
        break;
    }
}

void AlterAll(TSubject& subject) {
    ForEachField(TInstance(subject.Component),
                 [&](const std::string& path, const TField& field, const TInstance& instance) {
                     if (!field.IsStored()) return;
                     const std::string old = ValueOf(field, instance);
                     Alter(subject, field, instance);
                     if (field.Kind() == TFieldKind::SubObject) return;
                     EXPECT_NE(ValueOf(field, instance), old) << path;
                 });
}

class RoundTrip : public testing::TestWithParam<std::string> {
protected:
    TSubject m_subject{QString::fromStdString(GetParam())};
};

TEST_P(RoundTrip, StreamsKnowEveryPublishedProperty) {
    ForEachField(TInstance(m_subject.Component),
                 [](const std::string& path, const TField& field, const TInstance&) {
                     EXPECT_NE(field.Kind(), TFieldKind::Unknown) << path;
                 });
}

TEST_P(RoundTrip, EveryPropertyComesBackInBothForms) {
    AlterAll(m_subject);
    for (const TStreamForm form : {TStreamForm::Binary, TStreamForm::Text}) {
        const std::string saved = SavedAs(form, *m_subject.Component);
        TSubject loaded(QString::fromStdString(GetParam()));
        EXPECT_THAT(LoadInto(*loaded.Component, saved), testing::IsEmpty());
        EXPECT_EQ(ValuesOf(*loaded.Component), ValuesOf(*m_subject.Component));
        EXPECT_TRUE(SavedAs(form, *loaded.Component) == saved);
    }
}

TEST_P(RoundTrip, ANewOneComesBackAsItWas) {
    const std::string saved = SavedAs(TStreamForm::Text, *m_subject.Component);
    TSubject loaded(QString::fromStdString(GetParam()));
    EXPECT_THAT(LoadInto(*loaded.Component, saved), testing::IsEmpty());
    EXPECT_EQ(ValuesOf(*loaded.Component), ValuesOf(*m_subject.Component));
    EXPECT_EQ(SavedAs(TStreamForm::Text, *loaded.Component), saved);
}

TEST_P(RoundTrip, ANewOneHoldsTheDeclaredDefaults) {
    ForEachField(TInstance(m_subject.Component),
                 [](const std::string& path, const TField& field, const TInstance& instance) {
                     if (!field.IsStored() || !field.Default()) return;
                     EXPECT_EQ(field.Ordinal(instance), *field.Default()) << path;
                 });
}

TEST_P(RoundTrip, ResettingGivesTheDeclaredDefault) {
    AlterAll(m_subject);
    ForEachField(TInstance(m_subject.Component),
                 [](const std::string& path, const TField& field, const TInstance& instance) {
                     if (!field.IsStored() || !field.Default()) return;
                     EXPECT_TRUE(field.SetOrdinal(instance, *field.Default())) << path;
                     EXPECT_EQ(field.Ordinal(instance), *field.Default()) << path;
                 });
}

class TCountingPanel : public TZEPScenePanel {
public:
    void Invalidate() override { ++Count; }
    void SceneDestroyed() override {}
    int Count = 0;
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

/// A panel that counts what the scene of an object tells.
class TListening {
public:
    explicit TListening(TZEPObject& object) : m_object(object) {
        auto* own = qobject_cast<TZEPScene*>(&object);
        m_scene = own ? own : &m_root;
        m_scene->RegisterGLPanel(&Panel);
        if (!own) object.SetParentComponent(m_scene);
    }
    ~TListening() {
        if (m_scene == &m_root) m_object.SetParentComponent(nullptr);
        m_scene->UnregisterGLPanel(&Panel);
    }
    Q_DISABLE_COPY_MOVE(TListening)

    TCountingPanel Panel;

private:
    TZEPObject& m_object;
    TZEPScene m_root;
    TZEPScene* m_scene = nullptr;
};

TEST_P(RoundTrip, AnEqualValueNotifiesNobody) {
    auto* object = qobject_cast<TZEPObject*>(m_subject.Component);
    if (!object) return; // it can tell no scene
    TListening listening(*object);
    ForEachField(TInstance(object), [&](const std::string& path, const TField& field,
                                        const TInstance& instance) {
        // Face materials and lights tell of every parameter that is set.
        static const std::set<std::string_view> Loud{"Shininess", "Exponent", "Cutoff"};
        if (!field.IsStored() || Loud.contains(field.Name())) return;
        listening.Panel.Count = 0;
        SetAgain(field, instance);
        EXPECT_EQ(listening.Panel.Count, 0) << path;
    });
}

std::vector<std::string> RegisteredClasses() {
    std::vector<std::string> names;
    for (const QString& name : TClassRegistry::Instance().ClassNames())
        names.push_back(name.toStdString());
    return names;
}

INSTANTIATE_TEST_SUITE_P(Class, RoundTrip, testing::ValuesIn(RegisteredClasses()),
                         [](const auto& row) { return row.param; });

} // namespace
} // namespace ZEP
