#pragma once

#include <zep/Export.h>
#include <zep/framework/Persistent.h>

#include <QImage>

namespace ZEP {

class TReadBudget;

/// A picture of any format of pixels that Qt's image plugins read. It keeps the encoded bytes it
/// was read from, so that storing it again loses nothing; they are stored as the binary property
/// `Data`.
///
/// What a picture needs in memory is told by its head and taken from a budget before it is decoded;
/// without one, from a budget of its own.
class ZEP_CORE_EXPORT TPicture : public TPersistent {
    Q_GADGET
public:
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    /// Holds no graphic.
    [[nodiscard]] bool Empty() const { return m_image.isNull(); }
    [[nodiscard]] const QImage& Image() const { return m_image; }
    /// The encoded bytes: those that were loaded, else the picture as PNG; empty without one.
    [[nodiscard]] QByteArray Data() const;

    /// Shows `image` from now on and tells `OnChange`.
    void SetImage(const QImage& image);
    /// Decodes `data`, tells `OnChange`. Raises `Exception` and keeps what it held when that is no
    /// picture, or does not fit the budget; empty data clears.
    void SetData(const QByteArray& data, TReadBudget* budget = nullptr);
    /// Raises `Exception` naming the file where it cannot be read, is no picture or does not fit.
    void LoadFromFile(const QString& fileName, TReadBudget* budget = nullptr);
    void Clear();

    /// From another picture; others raise `Exception`. Tells `OnChange`.
    void Assign(const TPersistent* source) override;
    void DefineProperties(TFiler& filer) override;

    /// Called with the picture as sender after every change.
    TNotifyEvent OnChange;

protected:
    /// Bytes of what is made of a picture of that size beside it, by whoever shows it.
    [[nodiscard]] virtual qint64 BytesBeside(const QSize& size) const;

private:
    QImage m_image;
    QByteArray m_data;
};

} // namespace ZEP
