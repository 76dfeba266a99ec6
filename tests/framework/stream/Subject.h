#pragma once

#include "tests/framework/stream/Fields.h"

#include <zep/framework/Registry.h>
#include <zep/scene/XForm.h>

#include <QImage>

#include <gtest/gtest.h>

namespace ZEP {

inline std::vector<std::string> RegisteredClasses() {
    std::vector<std::string> names;
    for (const QString& name : TClassRegistry::Instance().ClassNames())
        names.push_back(name.toStdString());
    return names;
}

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

inline QByteArray SampleOf(const std::string& name) {
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

inline void AlterEnumeration(const TField& field, const TInstance& instance) {
    const qint64 old = field.Ordinal(instance);
    for (int i = 0; i < field.Names().keyCount(); ++i)
        if (field.Names().value(i) != old) {
            EXPECT_TRUE(field.SetOrdinal(instance, field.Names().value(i)));
            return;
        }
}

/// Gives a property another value than it has.
inline void Alter(const TSubject& subject, const TField& field, const TInstance& instance) {
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

inline void AlterAll(TSubject& subject) {
    ForEachField(TInstance(subject.Component),
                 [&](const std::string& path, const TField& field, const TInstance& instance) {
                     if (!field.IsStored()) return;
                     const std::string old = ValueOf(field, instance);
                     Alter(subject, field, instance);
                     if (field.Kind() == TFieldKind::SubObject) return;
                     EXPECT_NE(ValueOf(field, instance), old) << path;
                 });
}

} // namespace ZEP
