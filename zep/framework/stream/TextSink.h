#pragma once

#include <zep/framework/stream/ByteOutput.h>
#include <zep/framework/stream/Token.h>

namespace ZEP {

/// Writes the text form: ASCII but for names that are not, lines ending in LF.
class TTextSink : public TTokenSink {
public:
    explicit TTextSink(QIODevice& device) : m_output(device) {}

    void Write(const TToken& token) override;

private:
    void BeginComponent(const TToken& token);
    void BeginItem(const TToken& token);
    void End(std::string_view closing);
    void WriteMember(std::string_view name);
    void WriteValue(const TToken& token);
    void WriteFloat(double value);
    void WriteString(QStringView text);
    void WritePiece(QStringView text);
    void WriteBinary(std::string_view bytes);
    void Begin(char bracket);
    void NewLine();

    TByteOutput m_output;
    std::size_t m_level = 0;
    bool m_inSet = false;
    bool m_setIsEmpty = true;
};

} // namespace ZEP
