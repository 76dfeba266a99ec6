#include <zep/framework/Message.h>

#include <cstdio>
#include <utility>

namespace ZEP {

namespace {

TMessageHandler& Handler() {
    static TMessageHandler handler;
    return handler;
}

} // namespace

void ShowMessage(const QString& text, const QString& title, TMessageIcon icon) {
    if (Handler()) return Handler()(text, title, icon);
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(title), qUtf8Printable(text));
}

TMessageHandler SetMessageHandler(TMessageHandler handler) {
    return std::exchange(Handler(), std::move(handler));
}

} // namespace ZEP
