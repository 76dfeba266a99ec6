#include <zep/framework/Message.h>

#include <gtest/gtest.h>

#include <memory>

namespace ZEP {
namespace {

TEST(Message, TextsDoNotSteerTheTerminal) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
    PrintText(file.get(), QStringLiteral("a\x1b[31m\tb\x07\n\x7f\u009bü€"));
    std::rewind(file.get());
    char text[100] = "";
    text[std::fread(text, 1, sizeof text - 1, file.get())] = '\0';
    EXPECT_STREQ(text, "a\\u001b[31m\tb\\u0007\n\\u007f\\u009bü€");
}

TEST(Message, AHandlerMayBeReplacedInItsCall) {
    QString shown;
    const TMessageHandler former = SetMessageHandler(
        [&shown, end = QString(100, u'!')](const QString& text, const QString&, TMessageIcon) {
            SetMessageHandler({});
            shown = text + end;
        });
    ShowMessage(QStringLiteral("told"), {}, TMessageIcon::Hand);
    EXPECT_EQ(shown, QStringLiteral("told") + QString(100, u'!'));
    SetMessageHandler(former);
}

} // namespace
} // namespace ZEP
