#include <zep/framework/stream/Reader.h>

#include <zep/framework/Collection.h>
#include <zep/framework/Color.h>
#include <zep/framework/Component.h>
#include <zep/framework/Registry.h>

#include <QScopeGuard>
#include <QStringList>

#include <algorithm>

namespace ZEP {

namespace {

/// Memory of a component that is read, with all that it makes beside itself (an object of the
/// framework, a transform, a material), at most: as it was measured of each class.
constexpr std::size_t TimesItsClass = 7;

bool Opens(TTokenKind kind) {
    return kind == TTokenKind::BeginComponent || kind == TTokenKind::BeginCollection ||
           kind == TTokenKind::BeginItem || kind == TTokenKind::BeginList ||
           kind == TTokenKind::BeginSet;
}

bool Closes(TTokenKind kind) {
    return kind == TTokenKind::EndComponent || kind == TTokenKind::EndCollection ||
           kind == TTokenKind::EndItem || kind == TTokenKind::EndList || kind == TTokenKind::EndSet;
}

std::optional<qint64> OrdinalOf(const TField& field, const TToken& token) {
    const bool isName = token.Kind == TTokenKind::Identifier;
    switch (field.Kind()) {
    case TFieldKind::Boolean:
        if (token.Kind == TTokenKind::True) return 1;
        return token.Kind == TTokenKind::False ? std::optional<qint64>(0) : std::nullopt;
    case TFieldKind::Enumeration:
        return isName ? field.ValueOf(token.Bytes) : std::nullopt;
    case TFieldKind::Color:
        if (const auto color = isName ? ColorByName(token.Bytes) : std::nullopt)
            return color->Value;
        break;
    default:
        break;
    }
    return token.Kind == TTokenKind::Integer ? std::optional(token.Integer) : std::nullopt;
}

const char* OrdinalKind(TFieldKind kind) {
    switch (kind) {
    case TFieldKind::Boolean:
        return "True or False";
    case TFieldKind::Enumeration:
        return "a value of its enumeration";
    case TFieldKind::Color:
        return "a colour";
    default:
        return "an integer within its range";
    }
}

} // namespace

TReader::TReader(TTokenSource& source)
    : m_source(source), m_budget(static_cast<qint64>(source.Size())) {}

int TReader::CheckStructure() {
    m_source.Restart();
    return ZEP::CheckStructure(m_source);
}

void TReader::ReadRootComponent(TComponent& root) {
    m_source.Restart();
    m_depth = 0;
    m_references.Clear();
    m_items.clear();
    m_unknownClasses.clear();
    m_root = &root;
    m_parent = nullptr;
    const QString name = QString::fromUtf8(Next().Name);
    m_references.AddComponent(root, name);
    try {
        root.SetName(name);
    } catch (const Exception&) {
        // The name is another's already; whoever loads into a component knows it by its own.
    }
    if (!m_root) return; // who heard of the name has freed it
    try {
        root.ReadState(*this);
    } catch (const TGone&) {
        return;
    }
    m_references.Resolve(root, [this](const QString& message) { Error(message); });
    if (m_root) TellUnknown();
}

void TReader::TellUnknown() {
    if (m_unknownClasses.empty()) return;
    QStringList classes;
    qint64 count = 0;
    for (const auto& [name, times] : m_unknownClasses) {
        classes << name;
        count += times;
    }
    Q_EMIT m_root->ClassesUnknown(classes, count);
}

void TComponent::ReadState(TReader& reader) {
    reader.ReadData(*this);
}

// --- components --------------------------------------------------------------------------------

void TReader::ReadData(TComponent& component) {
    const QPointer<TComponent> alive(&component);
    TComponent* const parent = std::exchange(m_parent, nullptr);
    const TInstance instance(&component);
    m_component = &component;
    if (&component == m_root)
        TNumberPresets::ApplyToUsed(instance);
    else
        TNumberPresets::Apply(instance);
    m_filled.clear();
    while (!Next().Name.empty() && m_token->Kind != TTokenKind::BeginComponent) {
        ReadProperty(instance);
        if (!alive) throw TGone();
    }
    if (parent) component.SetParentComponent(parent);
    for (; alive && m_token->Kind == TTokenKind::BeginComponent; Next()) {
        if (m_ignoreChildren)
            Skip();
        else
            ReadChild(component);
        if (!alive) break;
    }
    if (!alive) throw TGone();
}

void TReader::ReadChild(TComponent& parent) {
    const QString className = QString::fromUtf8(m_token->Bytes);
    const QString name = QString::fromUtf8(m_token->Name);
    const TClassRegistry::Entry* entry = TClassRegistry::Instance().Find(className);
    if (!entry) {
        ++m_unknownClasses[className];
        Error(QStringLiteral("the class %1 is not known").arg(className));
        return Skip();
    }
    if (!Fits(TimesItsClass * entry->Bytes, "components")) return Skip();
    const int depth = m_depth;
    const QPointer<TComponent> child(entry->Make(m_root));
    auto drop = qScopeGuard([&] { delete child.data(); });
    TNumberPresets::Learn(TInstance(child.data()));
    NameChild(*child, name);
    m_references.AddComponent(*child, name);
    m_parent = &parent;
    try {
        child->ReadState(*this);
    } catch (const TGone&) {
        LeaveTo(depth - 1);
    }
    drop.dismiss(); // the root owns it
}

void TReader::LeaveTo(int depth) {
    while (m_depth > depth) Next();
}

void TReader::NameChild(TComponent& child, const QString& name) {
    try {
        child.SetName(name);
    } catch (const Exception& error) {
        Error(error.Message());
    }
}

// --- properties --------------------------------------------------------------------------------

void TReader::ReadProperty(TInstance instance) {
    std::string_view name = m_token->Name;
    for (std::size_t dot = name.find('.'); dot != std::string_view::npos; dot = name.find('.')) {
        const TField* field = TClassLayout::Of(*instance.Type).Find(name.substr(0, dot));
        const bool isPart = field && field->Kind() == TFieldKind::SubObject;
        TPersistent* part = isPart ? field->SubObject(instance) : nullptr;
        if (!part) break;
        instance = TInstance(part);
        name.remove_prefix(dot + 1);
    }
    const TField* field = TClassLayout::Of(*instance.Type).Find(name);
    try {
        if (!field)
            ReadDefined(instance, name);
        else
            ReadValue(*field, instance);
    } catch (const TStreamError&) {
        throw;
    } catch (const Exception& error) {
        Error(error.Message());
    }
}

void TReader::ReadDefined(const TInstance& instance, std::string_view name) {
    m_definedName = name;
    m_isDefined = false;
    instance.DefineProperties(*this);
    if (m_isDefined) return;
    Error(QStringLiteral("the property %1 is not known").arg(QString::fromUtf8(m_token->Name)));
    Skip();
}

void TReader::DefineBinaryProperty(const char* name,
                                   const std::function<void(const QByteArray&)>& read,
                                   const std::function<QByteArray()>&, bool) {
    if (m_isDefined || !SameName(name, m_definedName)) return;
    m_isDefined = true;
    if (m_token->Kind != TTokenKind::Binary) return Expect("binary data");
    read(QByteArray(m_token->Bytes.data(), static_cast<qsizetype>(m_token->Bytes.size())));
}

void TReader::ReadValue(const TField& field, const TInstance& instance) {
    if (field.Kind() == TFieldKind::Collection) {
        if (m_token->Kind != TTokenKind::BeginCollection) return Expect("a collection");
        return ReadCollection(*static_cast<TCollection*>(field.SubObject(instance)));
    }
    if (!field.IsStored()) return Expect("a property that can be set");
    switch (field.Kind()) {
    case TFieldKind::Single:
    case TFieldKind::Double:
        return ReadFloat(field, instance);
    case TFieldKind::String:
        if (m_token->Kind != TTokenKind::String) return Expect("a string");
        return field.SetString(instance, m_token->Text);
    case TFieldKind::Reference:
        return ReadReference(field, instance);
    case TFieldKind::Set:
        return ReadSet(field, instance);
    case TFieldKind::SubObject:
    case TFieldKind::Unknown:
        return Expect("a property of it");
    default:
        return ReadOrdinal(field, instance);
    }
}

void TReader::ReadFloat(const TField& field, const TInstance& instance) {
    if (m_token->Kind == TTokenKind::Float) return field.SetFloat(instance, m_token->Float);
    if (m_token->Kind != TTokenKind::Integer) return Expect("a number");
    field.SetFloat(instance, static_cast<double>(m_token->Integer));
}

void TReader::ReadOrdinal(const TField& field, const TInstance& instance) {
    const std::optional<qint64> value = OrdinalOf(field, *m_token);
    if (!value || !field.SetOrdinal(instance, *value)) Expect(OrdinalKind(field.Kind()));
}

void TReader::ReadSet(const TField& field, const TInstance& instance) {
    if (m_token->Kind != TTokenKind::BeginSet) return Expect("a set");
    qint64 set = 0;
    while (Next().Kind != TTokenKind::EndSet) {
        if (const std::optional<qint64> member = field.ValueOf(m_token->Bytes))
            set |= *member;
        else
            Error(
                QStringLiteral("the set has no member %1").arg(QString::fromUtf8(m_token->Bytes)));
    }
    static_cast<void>(field.SetOrdinal(instance, set));
}

void TReader::ReadReference(const TField& field, const TInstance& instance) {
    const bool isName = m_token->Kind == TTokenKind::Identifier;
    if (!isName && m_token->Kind != TTokenKind::Nil) return Expect("the name of a component");
    if (isName) m_references.Add(field, instance, *m_component, m_items, m_token->Bytes);
    field.SetReference(instance, nullptr);
}

// A collection is read once: items that a reference waits in must not go away again.
void TReader::ReadCollection(TCollection& collection) {
    if (!m_filled.insert(&collection).second) return Expect("this collection only once");
    collection.BeginUpdate();
    const auto update = qScopeGuard([&] {
        if (IsThere()) collection.EndUpdate();
    });
    collection.Clear();
    while (Next().Kind == TTokenKind::BeginItem) {
        if (IsThere() && Fits(collection.ItemBytes(), "items"))
            ReadItem(collection);
        else
            Skip();
    }
}

void TReader::ReadItem(TCollection& collection) {
    collection.Add();
    if (!IsThere() || collection.Count() == 0) return Skip();
    m_items.emplace_back(collection);
    const auto leave = qScopeGuard([this] { m_items.pop_back(); });
    const TInstance item(m_items.back().Item());
    TNumberPresets::ApplyToNew(item);
    while (Next().Kind != TTokenKind::EndItem) {
        if (IsThere())
            ReadProperty(item);
        else
            Skip();
    }
}

bool TReader::IsThere() const {
    return m_component && std::ranges::all_of(m_items, &TItemPlace::IsThere);
}

bool TReader::Fits(std::size_t bytes, const char* what) {
    if (m_budget.Take(static_cast<qint64>(bytes))) return true;
    Error(
        QStringLiteral("the stream has more %1 than its size allows").arg(QLatin1StringView(what)));
    return false;
}

// --- tokens ------------------------------------------------------------------------------------

const TToken& TReader::Next() {
    m_token = &m_source.Next();
    if (Opens(m_token->Kind)) ++m_depth;
    if (Closes(m_token->Kind)) --m_depth;
    return *m_token;
}

void TReader::Skip() {
    if (Opens(m_token->Kind)) LeaveTo(m_depth - 1);
}

void TReader::Error(const QString& message) {
    const TStreamError error(message, m_source.Where());
    if (m_errorCount++ == 0) {
        m_firstError = error.Message();
        m_firstErrorPlace = error.Origin().Place;
    }
    bool handled = false;
    if (OnError) OnError(*this, error.Message(), handled);
    if (!handled) throw error;
}

void TReader::Expect(const char* what) {
    Error(QStringLiteral("%1: expected %2")
              .arg(QString::fromUtf8(m_token->Name), QLatin1StringView(what)));
    Skip();
}

} // namespace ZEP
