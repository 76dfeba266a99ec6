#include <zep/framework/UserError.h>

#include <QStringList>

#include <new>

namespace ZEP {

namespace {

QString Sentence(QString text) {
    text = text.trimmed();
    if (text.isEmpty()) return text;
    text[0] = text[0].toUpper();
    const QChar last = text.back();
    return last.isPunct() && last != u'"' && last != u')' && last != u'\'' ? text : text + u'.';
}

/// A message that begins with its file goes on about it.
QString WithoutFile(const Exception& error) {
    if (error.Origin().File.isEmpty()) return error.Text();
    const QString quoted = QStringLiteral("\"%1\"").arg(error.Origin().File);
    const QString named = error.Origin().File + QStringLiteral(": ");
    const QString& text = error.Text();
    if (text.startsWith(named)) return text.mid(named.size());
    return text.startsWith(quoted) ? QStringLiteral("it") + text.mid(quoted.size()) : text;
}

} // namespace

QString ErrorReason(const std::exception& error) {
    if (const auto* told = dynamic_cast<const TUserError*>(&error)) return Sentence(told->Reason());
    if (const auto* raised = dynamic_cast<const Exception*>(&error))
        return Sentence(WithoutFile(*raised));
    if (dynamic_cast<const std::bad_alloc*>(&error))
        return QStringLiteral("There is not enough memory: close other files or programs.");
    return Sentence(QString::fromLocal8Bit(error.what()));
}

QString ErrorReport(const std::exception& error, const QString& file) {
    const auto* raised = dynamic_cast<const Exception*>(&error);
    const TErrorOrigin origin = raised ? raised->Origin() : TErrorOrigin{};
    QStringList where{origin.File.isEmpty() ? file : origin.File, origin.Place.Text()};
    where.removeAll(QString());
    if (!where.isEmpty())
        return where.join(QStringLiteral(", ")) + QStringLiteral(": ") + ErrorReason(error);
    const bool isPlain = raised && !dynamic_cast<const TUserError*>(raised);
    return isPlain ? raised->Text() : ErrorReason(error); // it may begin with a name
}

} // namespace ZEP
