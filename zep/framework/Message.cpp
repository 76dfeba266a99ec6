#include <zep/framework/Message.h>

#include <utility>

namespace ZEP {

namespace {

TMessageHandler& CurrentHandler() {
    static TMessageHandler handler;
    return handler;
}

} // namespace

void ShowMessage(const QString& text, const QString& title, TMessageIcon icon) {
    if (const TMessageHandler handler = CurrentHandler())
        return handler(text, title, icon); // it may go
    PrintText(stderr, title + QStringLiteral(": ") + text + QLatin1Char('\n'));
}

void PrintText(std::FILE* stream, const QString& text) {
    QString shown;
    shown.reserve(text.size());
    for (const QChar c : text) {
        const bool isControl = c.category() == QChar::Other_Control && c != u'\n' && c != u'\t';
        shown += isControl ? QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'))
                           : QString(c);
    }
    std::fputs(qUtf8Printable(shown), stream);
}

TMessageHandler SetMessageHandler(TMessageHandler handler) {
    return std::exchange(CurrentHandler(), std::move(handler));
}

} // namespace ZEP
