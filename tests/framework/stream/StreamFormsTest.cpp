#include "tests/Cases.h"
#include "tests/framework/stream/StreamText.h"

#include <gmock/gmock.h>

#include <charconv>
#include <cmath>

namespace ZEP {
namespace {

std::string Unnamed(std::string text) {
    for (const auto& [name, character] : {std::pair("\\n", "\n"), {"\\r", "\r"}, {"\\t", "\t"}})
        text = QString::fromLatin1(text)
                   .replace(QLatin1String(name), QLatin1String(character))
                   .toLatin1()
                   .toStdString();
    return text;
}

std::string HexOf(const std::string& bytes) {
    return QByteArray::fromStdString(bytes).toHex().toStdString();
}

/// Texts, and their bytes as hexadecimal digits.
TEST(StreamForms, TheSampleIsTheSameInBothForms) {
    ExpectCases("text/sample.txt", [](const TCase& c) {
        const std::string bytes = ToBinary(c.Input);
        EXPECT_EQ(ToText(bytes), c.Input);
        EXPECT_EQ(ToBinary(bytes), bytes);
        EXPECT_EQ(ToText(c.Input), c.Input);
        std::string lines;
        for (std::size_t at = 0; at < bytes.size(); at += 32)
            lines += HexOf(bytes.substr(at, 32)) + '\n';
        return lines;
    });
}

/// Of each line of an input, which ends with "|": bytes are hexadecimal digits.
TEST(StreamForms, EachValueAndEachErrorIsAsWritten) {
    ExpectCases("text/streams.txt", [](const TCase& c) {
        std::istringstream lines(c.Input);
        std::string answer;
        for (std::string line; std::getline(lines, line);) {
            line.pop_back();
            std::string text;
            if (c.Name == "bytes of a value") text = TextOfValue(Hex(line.c_str()));
            if (c.Name == "text of a value") text = HexOf(BytesOfValue(Unnamed(line)));
            if (c.Name == "errors of a text") text = ToBinary(Unnamed(line));
            if (c.Name == "errors of bytes") text = ToText(Hex(line.c_str()));
            answer +=
                QString::fromStdString(text).replace(u'\n', QStringLiteral("\\n")).toStdString() +
                "|\n";
        }
        return answer;
    });
}

TEST(StreamForms, WordsMayBeWrittenInOtherWays) {
    const std::string bytes = ToBinary("object A: T end");
    EXPECT_EQ(ToBinary("\xEF\xBB\xBFOBJECT A:T\tEND\r\n"), bytes);
    EXPECT_EQ(ToBinary("inherited A: T [3] end"), bytes);
    EXPECT_EQ(ToBinary("inline A: T end"), bytes);
}

TEST(StreamForms, PrefixesAreReadAndIgnored) {
    const std::string plain = "TPF0" + Short("T") + std::string(3, '\0');
    const std::string tail = plain.substr(4);
    EXPECT_EQ(ToBinary("TPF0" + Hex("F1") + tail), plain);
    EXPECT_EQ(ToBinary("TPF0" + Hex("F6 0207") + tail), plain);
    EXPECT_EQ(ToBinary("TPF0" + Hex("F2 13 0102030405060708") + tail), plain);
}

TEST(StreamForms, WordsOfTheTextFormMayBeNames) {
    const std::string text = "object object: item\n  End = 1\n  item = 2\n  Object.end = end\n"
                             "  object end: end\n  end\nend\n";
    EXPECT_EQ(ToText(ToBinary(text)), text);
}

TEST(StreamForms, LongStringsAreWrittenInPiecesAndReadAsOne) {
    for (const std::size_t length : {64U, 65U, 128U, 255U, 256U, 1000U}) {
        const std::string content(length, 'x');
        const std::string text = "object T\n  P =\n    '" + content.substr(0, 64) + "'";
        const std::string bytes = ToBinary("object T P = '" + content + "' end");
        EXPECT_EQ(ToText(bytes).starts_with(text), length > 64) << length;
        EXPECT_EQ(ToBinary(ToText(bytes)), bytes) << length;
    }
}

TEST(StreamForms, EveryDoubleSurvivesBothForms) {
    for (int i = 0; i < 20'000; ++i) {
        const auto seed = static_cast<std::uint64_t>(i) * 0x9E3779B97F4A7C15ULL;
        const auto value = std::bit_cast<double>(seed ^ (seed >> 29));
        if (!std::isfinite(value)) continue;
        std::string bytes(1, '\x15');
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
        const std::string text = TextOfValue(bytes);
        double read = 0;
        std::from_chars(text.data(), text.data() + text.size(), read);
        ASSERT_EQ(read, value) << text;
        ASSERT_EQ(TextOfValue(BytesOfValue(text)), text);
    }
}

} // namespace
} // namespace ZEP
