#include <zep/framework/DebugLog.h>

#include <utility>

namespace ZEP {

namespace {

TDebugLogHandler& Handler() {
    static TDebugLogHandler handler;
    return handler;
}

} // namespace

void DebugLog(const QString& line) {
    if (Handler()) Handler()(line);
}

bool DebugLogEnabled() {
    return static_cast<bool>(Handler());
}

TDebugLogHandler SetDebugLogHandler(TDebugLogHandler handler) {
    return std::exchange(Handler(), std::move(handler));
}

} // namespace ZEP
