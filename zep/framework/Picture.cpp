#include <zep/framework/Picture.h>

#include <zep/framework/Exception.h>

#include <QBuffer>
#include <QFile>

namespace ZEP {

QByteArray TPicture::Data() const {
    if (Empty() || !m_data.isEmpty()) return m_data;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    m_image.save(&buffer, "PNG");
    return buffer.data();
}

void TPicture::SetImage(const QImage& image) {
    m_image = image;
    m_data.clear();
    OnChange(this);
}

void TPicture::SetData(const QByteArray& data) {
    if (data.isEmpty()) return Clear();
    const QImage image = QImage::fromData(data);
    if (image.isNull()) throw Exception(QStringLiteral("The data is no picture of a known format"));
    m_image = image;
    m_data = data;
    OnChange(this);
}

void TPicture::LoadFromFile(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw Exception(QStringLiteral("Cannot open %1: %2").arg(fileName, file.errorString()),
                        {.File = fileName});
    const QByteArray data = file.readAll();
    if (data.isEmpty() || QImage::fromData(data).isNull())
        throw Exception(QStringLiteral("%1 is no picture of a known format").arg(fileName),
                        {.File = fileName});
    SetData(data);
}

void TPicture::Clear() {
    SetImage({});
}

void TPicture::Assign(const TPersistent* source) {
    const auto* picture = dynamic_cast<const TPicture*>(source);
    if (!picture) return TPersistent::Assign(source);
    m_image = picture->m_image;
    m_data = picture->m_data;
    OnChange(this);
}

void TPicture::DefineProperties(TFiler& filer) {
    filer.DefineBinaryProperty(
        "Data", [this](const QByteArray& data) { SetData(data); }, [this] { return Data(); },
        !Empty());
}

} // namespace ZEP
