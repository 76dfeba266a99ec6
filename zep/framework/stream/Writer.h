#pragma once

#include <zep/Export.h>
#include <zep/framework/Persistent.h>
#include <zep/framework/stream/Token.h>

#include <string>
#include <string_view>

namespace ZEP {

class TCollection;
class TComponent;
class TField;
struct TInstance;

/// Writes a component with its published properties and its children as a stream. Writing changes
/// nothing in what is written.
class ZEP_CORE_EXPORT TWriter : public TFiler {
public:
    /// \param sink  takes one stream; must outlive this
    explicit TWriter(TTokenSink& sink) : m_sink(sink) {}

    /// Writes the stream's outermost component. Raises `Exception` for what a stream cannot hold
    /// and where the output cannot be written.
    void WriteRootComponent(TComponent& root);
    /// Leaves out a published property wherever it stands, such as the `Selected` of a view's
    /// objects, which a document need not keep.
    void Omit(std::string_view property) { m_omitted = property; }

    /// \name For `TComponent::WriteState`
    /// @{
    /// The properties of a component and, unless they are ignored, its children.
    void WriteData(TComponent& component);
    [[nodiscard]] bool IgnoreChildren() const { return m_ignoreChildren; }
    void SetIgnoreChildren(bool ignore) { m_ignoreChildren = ignore; }
    void DefineBinaryProperty(const char* name, const std::function<void(const QByteArray&)>& read,
                              const std::function<QByteArray()>& write, bool hasData) override;
    /// @}

private:
    void WriteComponent(TComponent& component);
    void WriteFields(const TInstance& instance);
    void WriteField(const TField& field, const TInstance& instance);
    void WriteOrdinal(const TField& field, const TInstance& instance);
    void WriteEnumeration(const TField& field, qint64 value);
    void WriteSet(const TField& field, qint64 value);
    void WriteReference(const QObject* object);
    void WriteCollection(const TCollection& collection);
    void WriteIdentifier(std::string_view name);
    void WriteInteger(qint64 value);
    void Write(TTokenKind kind);
    void Begin(TTokenKind kind);
    void End(TTokenKind kind);

    TTokenSink& m_sink;
    TToken m_token;
    std::string m_omitted;
    std::string m_path; // of the property that is written, dots included
    TComponent* m_root = nullptr;
    int m_depth = 0;
    bool m_ignoreChildren = false;
};

} // namespace ZEP
