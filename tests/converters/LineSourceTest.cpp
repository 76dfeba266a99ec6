#include <zep/converters/LineSource.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ZEP {
namespace {

using TLines = std::vector<std::string>;

TLines Split(std::string_view text) {
    TLineSource source(text);
    TLines lines;
    std::string_view line;
    while (source.Next(line)) {
        lines.emplace_back(line);
        EXPECT_EQ(source.LineNumber(), static_cast<qint64>(lines.size()));
    }
    EXPECT_EQ(source.Position() + (text.starts_with("\xEF") ? 3 : 0), text.size());
    return lines;
}

TEST(LineSource, TakesEachKindOfLineEnd) {
    using namespace std::string_literals;
    const struct {
        std::string Text;
        TLines Lines;
    } rows[] = {
        {"", {}},
        {"a", {"a"}},
        {"a\nb", {"a", "b"}},
        {"a\n\nb\n", {"a", "", "b"}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\r\r\nb\r\r\n", {"a", "b"}},
        {"a\rb\rc", {"a", "b", "c"}},
        {"a\r\rb", {"a", "", "b"}},
        {"a\rb\nc\r\nd\r", {"a", "b", "c", "d"}},
        {"\r\r\r\na", {"", "", "a"}},
        {"a\0b\nc"s, {"a\0b"s, "c"}},
        {"\xEF\xBB\xBFG1\nX2", {"G1", "X2"}},
    };
    for (const auto& row : rows) EXPECT_EQ(Split(row.Text), row.Lines) << row.Text;
}

TEST(LineSource, IsLinearForCarriageReturnsAlone) {
    // A search for the next line feed from each line on would take minutes.
    const std::string text(20'000'000, '\r');
    TLineSource source(text);
    std::string_view line;
    while (source.Next(line)) ASSERT_TRUE(line.empty());
    EXPECT_EQ(source.LineNumber(), 20'000'000);
}

} // namespace
} // namespace ZEP
