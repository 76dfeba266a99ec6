#pragma once

#include <zep/framework/stream/Token.h>

#include <vector>

namespace ZEP {

/// Reads the binary form, which begins with "TPF0".
class TBinarySource : public TTokenSource {
public:
    /// \param data  must outlive this
    explicit TBinarySource(std::string_view data) : m_data(data) {}

    const TToken& Next() override;
    void Restart() override;
    [[nodiscard]] TFilePlace Where() override;
    [[nodiscard]] std::size_t Size() const override { return m_data.size(); }
    void ExpectEnd() override;

private:
    enum class TPart : unsigned char { Properties, Children, List, Set, Collection, Item };

    const TToken& Step();
    const TToken& Emit(TTokenKind kind);
    const TToken& Begin(TTokenKind kind, TPart part);
    const TToken& EndPart(TTokenKind kind);
    const TToken& ReadComponent();
    const TToken& ReadProperty();
    const TToken& ReadItem();
    const TToken& ReadMember();
    const TToken& ReadValue(unsigned char tag);
    const TToken& ReadString(unsigned char tag);
    const TToken& ReadIdentifier();
    const TToken& EmitInteger(qint64 value);
    const TToken& EmitFloat(double value);

    [[nodiscard]] qint64 ReadInteger(unsigned char tag);
    [[nodiscard]] unsigned char ReadByte(const char* what);
    [[nodiscard]] std::string_view ReadBytes(std::size_t count, const char* what);
    [[nodiscard]] std::string_view ReadShort(const char* what);
    [[nodiscard]] std::string_view ReadLong(std::size_t unit, const char* what);
    [[nodiscard]] std::string_view Named(std::string_view name, const char* what) const;
    template <class T>
    [[nodiscard]] T ReadNumber();
    [[noreturn]] void Fail(const QString& message) const;

    std::string_view m_data;
    std::size_t m_next = 0;  // byte to be read next
    std::size_t m_start = 0; // first byte of the token
    bool m_started = false;
    std::vector<TPart> m_parts;
    TToken m_token;
};

} // namespace ZEP
