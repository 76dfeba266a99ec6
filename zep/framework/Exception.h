#pragma once

#include <zep/Export.h>

#include <QString>

#include <stdexcept>
#include <utility>

namespace ZEP {

/// Where in a file something stands: by line in a text, by offset in other bytes.
struct TFilePlace {
    qint64 Line = 0;    ///< from 1; 0: it is not told by lines
    qint64 Column = 0;  ///< in bytes, from 1; 0: only the line is known
    qint64 Offset = -1; ///< in bytes; -1: it is not told by bytes

    /// "line 3, column 5", "line 3" or "offset 17"; empty where nothing is known.
    [[nodiscard]] QString Text() const {
        if (Offset >= 0) return QStringLiteral("offset %1").arg(Offset);
        if (Line <= 0) return {};
        const QString line = QStringLiteral("line %1").arg(Line);
        return Column > 0 ? line + QStringLiteral(", column %1").arg(Column) : line;
    }
};

/// What an error is about, as far as the one who raised it knew.
struct TErrorOrigin {
    QString Method{}; ///< that raised it: "TDXFConverter.LoadFromFile"; begins the message
    QString File{};   ///< that the message names
    TFilePlace Place{};
};

/// The error that every operation of this library raises: clear English, naming file and line or
/// offset where there is one. Whoever needs one of these alone asks for it: a message is for
/// people.
class ZEP_CORE_EXPORT Exception : public std::runtime_error {
public:
    /// \param text  without the method, with file and place as people read them
    explicit Exception(const QString& text, TErrorOrigin origin = {})
        : std::runtime_error(Whole(text, origin).toStdString()), m_text(text),
          m_origin(std::move(origin)) {}

    /// The message as the user reads it, the method first where there is one.
    [[nodiscard]] QString Message() const { return Whole(m_text, m_origin); }
    /// The message without the method.
    [[nodiscard]] const QString& Text() const { return m_text; }
    /// Empty fields where nothing is known.
    [[nodiscard]] const TErrorOrigin& Origin() const { return m_origin; }

private:
    [[nodiscard]] static QString Whole(const QString& text, const TErrorOrigin& origin) {
        return origin.Method.isEmpty() ? text : origin.Method + QStringLiteral(": ") + text;
    }

    QString m_text;
    TErrorOrigin m_origin;
};

} // namespace ZEP
