#pragma once

#include <zep/framework/stream/ByteOutput.h>
#include <zep/framework/stream/Token.h>

#include <vector>

namespace ZEP {

/// Writes the binary form.
class TBinarySink : public TTokenSink {
public:
    explicit TBinarySink(QIODevice& device) : m_output(device) {}

    void Write(const TToken& token) override;

private:
    void BeginComponent(const TToken& token);
    void EndComponent();
    void EndProperties();
    void BeginItem(const TToken& token);
    void WriteValue(const TToken& token);
    void WriteInteger(qint64 value);
    void WriteFloat(double value);
    void WriteString(const QString& text);
    void WriteShort(std::string_view bytes);
    void WriteLong(unsigned char tag, std::string_view bytes, std::size_t count);
    void WriteTag(unsigned char tag) { m_output.Append(static_cast<char>(tag)); }
    template <class T>
    void WriteNumber(T value);

    TByteOutput m_output;
    std::vector<bool> m_hasChildren; // for each component that is open
    bool m_inSet = false;
};

} // namespace ZEP
