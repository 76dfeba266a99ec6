#include "converters/DXFText.h"

#include <QStringDecoder>

namespace ZEP {

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a code page will be its state
QString TDXFText::Decode(std::string_view value) const {
    const QByteArrayView bytes(value.data(), static_cast<qsizetype>(value.size()));
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

} // namespace ZEP
