#include <zep/framework/Picture.h>

#include <zep/framework/FileText.h>
#include <zep/framework/PictureDecoding.h>
#include <zep/framework/ReadBudget.h>
#include <zep/framework/UserError.h>

#include <QBuffer>

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

void TPicture::SetData(const QByteArray& data, TReadBudget* budget) {
    if (data.isEmpty()) return Clear();
    TReadBudget own(data.size());
    const auto beside = [this](const QSize& size) { return BytesBeside(size); };
    m_image = DecodePicture(data, budget ? *budget : own, beside);
    m_data = data;
    OnChange(this);
}

void TPicture::LoadFromFile(const QString& fileName, TReadBudget* budget) {
    const TFileText file(fileName);
    const std::string_view bytes = file.Text();
    const auto named = [&](const Exception& error) {
        return fileName + QStringLiteral(": ") + error.Message();
    };
    try {
        if (bytes.empty()) throw Exception(QStringLiteral("The file is empty"));
        SetData(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())), budget);
    } catch (const TPictureTooLarge& error) {
        throw TPictureTooLarge(named(error), {.File = fileName});
    } catch (const Exception& error) {
        throw TUserError(named(error), error.Text(), {.File = fileName});
    }
}

qint64 TPicture::BytesBeside(const QSize&) const {
    return 0;
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
        "Data", [&](const QByteArray& data) { SetData(data, filer.Budget()); },
        [this] { return Data(); }, !Empty());
}

} // namespace ZEP
