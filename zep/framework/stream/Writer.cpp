#include <zep/framework/stream/Writer.h>

#include <zep/framework/Collection.h>
#include <zep/framework/Component.h>
#include <zep/framework/LookOnly.h>
#include <zep/framework/stream/ClassLayout.h>

namespace ZEP {

namespace {

std::string_view View(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// The class name without its namespace, without a string for each component.
std::string_view BareName(const QMetaObject& type) {
    const std::string_view name = type.className();
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

/// Has a name appended to a path for as long as it lives.
class TPathPart {
public:
    TPathPart(std::string& path, std::string_view name, bool isLast)
        : m_path(path), m_length(path.size()) {
        path.append(name);
        if (!isLast) path.push_back('.');
    }
    ~TPathPart() { m_path.resize(m_length); }
    Q_DISABLE_COPY_MOVE(TPathPart)

private:
    std::string& m_path;
    std::size_t m_length;
};

} // namespace

void TWriter::WriteRootComponent(TComponent& root) {
    const TLookOnly look;
    m_root = &root;
    WriteComponent(root);
}

void TWriter::WriteComponent(TComponent& component) {
    const QByteArray name = component.Name().toUtf8();
    m_token.Name = View(name);
    m_token.Bytes = BareName(*component.metaObject());
    Begin(TTokenKind::BeginComponent);
    component.WriteState(*this);
    End(TTokenKind::EndComponent);
}

void TWriter::WriteData(TComponent& component) {
    WriteFields(TInstance(&component));
    if (!m_ignoreChildren)
        component.GetChildren([this](TComponent* child) { WriteComponent(*child); }, m_root);
}

void TComponent::WriteState(TWriter& writer) {
    writer.WriteData(*this);
}

void TWriter::WriteFields(const TInstance& instance) {
    for (const TField& field : TClassLayout::Of(*instance.Type).Fields())
        if (field.IsStored() && field.Name() != m_omitted) WriteField(field, instance);
    instance.DefineProperties(*this);
}

void TWriter::WriteField(const TField& field, const TInstance& instance) {
    const TPathPart part(m_path, field.Name(), field.Kind() != TFieldKind::SubObject);
    switch (field.Kind()) {
    case TFieldKind::SubObject:
        if (TPersistent* object = field.SubObject(instance)) WriteFields(TInstance(object));
        return;
    case TFieldKind::Collection:
        if (TPersistent* object = field.SubObject(instance))
            WriteCollection(*static_cast<TCollection*>(object));
        return;
    case TFieldKind::Reference:
        return WriteReference(field.Reference(instance));
    case TFieldKind::String:
        m_token.Text = field.String(instance);
        if (!m_token.Text.isEmpty()) Write(TTokenKind::String);
        return;
    case TFieldKind::Single:
    case TFieldKind::Double:
        m_token.Float = field.Float(instance);
        if (m_token.Float != 0) Write(TTokenKind::Float);
        return;
    case TFieldKind::Unknown:
        return;
    default:
        return WriteOrdinal(field, instance);
    }
}

void TWriter::WriteOrdinal(const TField& field, const TInstance& instance) {
    const qint64 value = field.Ordinal(instance);
    if (field.Default() == value) return;
    switch (field.Kind()) {
    case TFieldKind::Boolean:
        return Write(value ? TTokenKind::True : TTokenKind::False);
    case TFieldKind::Enumeration:
        return WriteEnumeration(field, value);
    case TFieldKind::Set:
        return WriteSet(field, value);
    default:
        return WriteInteger(value);
    }
}

void TWriter::WriteEnumeration(const TField& field, qint64 value) {
    const char* name = field.Names().valueToKey(static_cast<int>(value));
    if (!name) return WriteInteger(value);
    WriteIdentifier(name);
}

void TWriter::WriteSet(const TField& field, qint64 value) {
    m_token.Name = m_path;
    Begin(TTokenKind::BeginSet);
    for (int i = 0; i < field.Names().keyCount(); ++i) {
        const int member = field.Names().value(i);
        if (member == 0 || (value & member) != member) continue;
        m_token.Bytes = field.Names().key(i);
        m_token.Kind = TTokenKind::Identifier;
        m_sink.Write(m_token);
    }
    End(TTokenKind::EndSet);
}

// What has no name cannot be found again.
void TWriter::WriteReference(const QObject* object) {
    if (!object || object->objectName().isEmpty()) return;
    const QByteArray name = object->objectName().toUtf8();
    WriteIdentifier(View(name));
}

void TWriter::WriteCollection(const TCollection& collection) {
    m_token.Name = m_path;
    Begin(TTokenKind::BeginCollection);
    const std::string path = std::exchange(m_path, {});
    for (int i = 0; i < collection.Count(); ++i) {
        Begin(TTokenKind::BeginItem);
        WriteFields(TInstance(collection.GetItem(i)));
        End(TTokenKind::EndItem);
    }
    m_path = path;
    End(TTokenKind::EndCollection);
}

void TWriter::DefineBinaryProperty(const char* name, const std::function<void(const QByteArray&)>&,
                                   const std::function<QByteArray()>& write, bool hasData) {
    if (!hasData) return;
    const TPathPart part(m_path, name, true);
    const QByteArray data = write();
    m_token.Bytes = View(data);
    Write(TTokenKind::Binary);
}

// --- tokens ------------------------------------------------------------------------------------

void TWriter::WriteIdentifier(std::string_view name) {
    m_token.Bytes = name;
    Write(TTokenKind::Identifier);
}

void TWriter::WriteInteger(qint64 value) {
    m_token.Integer = value;
    Write(TTokenKind::Integer);
}

void TWriter::Write(TTokenKind kind) {
    m_token.Name = m_path;
    m_token.Kind = kind;
    m_sink.Write(m_token);
}

void TWriter::Begin(TTokenKind kind) {
    if (++m_depth > MaxStreamDepth)
        throw Exception(QStringLiteral("A tree nested deeper than %1 levels cannot be stored")
                            .arg(MaxStreamDepth));
    m_token.Kind = kind;
    m_sink.Write(m_token);
    m_token.Name = {};
}

void TWriter::End(TTokenKind kind) {
    --m_depth;
    m_token.Name = {};
    m_token.Kind = kind;
    m_sink.Write(m_token);
}

} // namespace ZEP
