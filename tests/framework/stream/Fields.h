#pragma once

#include <zep/framework/Collection.h>
#include <zep/framework/Component.h>
#include <zep/framework/stream/ClassLayout.h>
#include <zep/framework/stream/Reader.h>
#include <zep/framework/stream/StreamFile.h>
#include <zep/framework/stream/Writer.h>

#include <QBuffer>

namespace ZEP {

using TFieldVisitor =
    std::function<void(const std::string& path, const TField& field, const TInstance& instance)>;

/// Calls `visit` for every published property, those of sub-objects and items included.
inline void ForEachField(const TInstance& instance, const TFieldVisitor& visit,
                         const std::string& prefix = {}) {
    for (const TField& field : TClassLayout::Of(*instance.Type).Fields()) {
        const std::string path = prefix + std::string(field.Name());
        visit(path, field, instance);
        if (field.Kind() == TFieldKind::SubObject)
            ForEachField(TInstance(field.SubObject(instance)), visit, path + ".");
        if (field.Kind() != TFieldKind::Collection) continue;
        auto* collection = static_cast<TCollection*>(field.SubObject(instance));
        for (int i = 0; i < collection->Count(); ++i)
            ForEachField(TInstance(collection->GetItem(i)), visit,
                         path + "[" + std::to_string(i) + "].");
    }
}

/// What a stream calls the value of a property.
inline std::string ValueOf(const TField& field, const TInstance& instance) {
    switch (field.Kind()) {
    case TFieldKind::Single:
    case TFieldKind::Double:
        return QString::number(field.Float(instance), 'f').toStdString();
    case TFieldKind::String:
        return field.String(instance).toStdString();
    case TFieldKind::Reference: {
        const QObject* object = field.Reference(instance);
        return object ? object->objectName().toStdString() : "none";
    }
    case TFieldKind::SubObject:
        return "sub-object";
    case TFieldKind::Collection:
        return std::to_string(static_cast<TCollection*>(field.SubObject(instance))->Count());
    case TFieldKind::Unknown:
        return "unknown";
    default:
        return std::to_string(field.Ordinal(instance));
    }
}

/// The binary properties that an object defines by hand.
class TDefinedProperties : public TFiler {
public:
    using TVisitor = std::function<void(const std::string& name,
                                        const std::function<void(const QByteArray&)>& read,
                                        const QByteArray& data)>;
    explicit TDefinedProperties(TVisitor visit) : m_visit(std::move(visit)) {}

    void DefineBinaryProperty(const char* name, const std::function<void(const QByteArray&)>& read,
                              const std::function<QByteArray()>& write, bool hasData) override {
        m_visit(name, read, hasData ? write() : QByteArray());
    }

private:
    TVisitor m_visit;
};

/// Every stored value of a component as "path = value".
inline std::vector<std::string> ValuesOf(TComponent& component) {
    std::vector<std::string> values;
    ForEachField(TInstance(&component),
                 [&](const std::string& path, const TField& field, const TInstance& instance) {
                     if (field.IsStored())
                         values.push_back(path + " = " + ValueOf(field, instance));
                     if (field.Kind() != TFieldKind::SubObject) return;
                     TDefinedProperties defined([&](const std::string& name, const auto&,
                                                    const QByteArray& data) {
                         values.push_back(path + "." + name + " = " + data.toHex().toStdString());
                     });
                     field.SubObject(instance)->DefineProperties(defined);
                 });
    return values;
}

inline std::string SavedAs(TStreamForm form, TComponent& component) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const auto sink = MakeSink(form, buffer);
    TWriter writer(*sink);
    writer.WriteRootComponent(component);
    return buffer.data().toStdString();
}

/// Reads a stream, in whatever form it is; the faults that were passed over.
inline std::vector<std::string> LoadInto(TComponent& component, std::string_view data) {
    const auto source = MakeSource(StreamFormOf(data).value_or(TStreamForm::Binary), data);
    TReader reader(*source);
    std::vector<std::string> errors;
    reader.OnError = [&errors](TReader&, const QString& message, bool& handled) {
        errors.push_back(message.toStdString());
        handled = true;
    };
    reader.ReadRootComponent(component);
    return errors;
}

} // namespace ZEP
