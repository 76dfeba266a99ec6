#pragma once

#include <zep/Export.h>
#include <zep/framework/Notify.h>
#include <zep/framework/Persistent.h>
#include <zep/framework/Property.h>

#include <QFont>

namespace ZEP {

/// A font of the system by its name; where there is none of that name the system answers with a
/// similar one. Starts as Arial of 12 pixels.
class ZEP_CORE_EXPORT TFont : public TPersistent {
    Q_GADGET
    Q_PROPERTY(QString Name READ Name WRITE SetName)
    Q_PROPERTY(int Height READ Height WRITE SetHeight)
    Q_CLASSINFO("Height", "12")
    Q_PROPERTY(TFontStyles Style READ Style WRITE SetStyle)
    Q_CLASSINFO("Style", "")
public:
    enum TFontStyle : unsigned char {
        fsBold = 1 << 0,
        fsItalic = 1 << 1,
        fsUnderline = 1 << 2,
        fsStrikeOut = 1 << 3
    };
    Q_DECLARE_FLAGS(TFontStyles, TFontStyle)
    Q_FLAG(TFontStyles)

    static constexpr int MaxHeight = 1000;

    /// \param onChange  called with this as sender after every change
    explicit TFont(TNotifyEvent onChange = {}) : m_onChange(onChange) {}
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] const QString& Name() const { return m_name; }
    void SetName(const QString& name) { Store(m_name, name); }
    [[nodiscard]] int Height() const { return m_height; }
    /// Of a line in pixels, where text is drawn as a bitmap; kept within 1 to `MaxHeight`.
    void SetHeight(int height) { Store(m_height, qBound(1, height, MaxHeight)); }
    [[nodiscard]] TFontStyles Style() const { return m_style; }
    void SetStyle(TFontStyles style) { Store(m_style, style); }

    /// The system's font of that look, `pixels` high.
    [[nodiscard]] QFont ToQFont(int pixels) const;

    /// Copies another font; others raise `Exception`.
    void Assign(const TPersistent* source) override;

private:
    template <class T>
    void Store(T& field, T value) {
        if (Change(field, value)) m_onChange(this);
    }

    TNotifyEvent m_onChange;
    QString m_name = QStringLiteral("Arial");
    int m_height = 12;
    TFontStyles m_style;
};

using TFontStyle = TFont::TFontStyle;
using TFontStyles = TFont::TFontStyles;
using enum TFont::TFontStyle;
Q_DECLARE_OPERATORS_FOR_FLAGS(TFontStyles)

} // namespace ZEP
