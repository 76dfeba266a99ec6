#include "tests/framework/stream/StreamText.h"

#include <gmock/gmock.h>

#include <charconv>
#include <cmath>

namespace ZEP {
namespace {

const std::string SampleText = R"(object Scene1: TZEPScene
  Tag = 3
  Ident = 'caf'#233' it''s'
  XForm.Scale.X = 1.5
  XForm.Translate.X = -0.1
  XForm.Matrix = {
    000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F
    2021}
  Animation = True
  Options = [goDepthTest, goLighting]
  DrawType = dtLine
  Camera = Camera1
  MaterialLibrary = nil
  object Box1: TZEPBox
    SlicesX = 300
  end
  object TZEPPolygon
    Vertexes = <
      item
        X = 1
        Color = 255
      end
      item
      end>
  end
end
)";

std::string SampleBytes() {
    const std::string zero(1, '\0');
    std::string bytes = "TPF0" + Short("TZEPScene") + Short("Scene1");
    bytes += Short("Tag") + Hex("02 03");
    bytes += Short("Ident") + Hex("14 0A000000") + "caf\xC3\xA9 it's";
    bytes += Short("XForm.Scale.X") + Hex("05 00000000000000C0FF3F");
    bytes += Short("XForm.Translate.X") + Hex("05 00D0CCCCCCCCCCCCFBBF");
    bytes += Short("XForm.Matrix") + Hex("0A 22000000");
    for (char c = 0; c < 0x22; ++c) bytes += c;
    bytes += Short("Animation") + Hex("09");
    bytes += Short("Options") + Hex("0B") + Short("goDepthTest") + Short("goLighting") + zero;
    bytes += Short("DrawType") + Hex("07") + Short("dtLine");
    bytes += Short("Camera") + Hex("07") + Short("Camera1");
    bytes += Short("MaterialLibrary") + Hex("0D") + zero;
    bytes += Short("TZEPBox") + Short("Box1") + Short("SlicesX") + Hex("03 2C01") + zero + zero;
    bytes += Short("TZEPPolygon") + zero + Short("Vertexes") + Hex("0E 01");
    bytes += Short("X") + Hex("02 01") + Short("Color") + Hex("03 FF00") + zero;
    bytes += Hex("01 00") + zero + zero + zero;
    return bytes + zero;
}

TEST(StreamForms, TheSampleIsTheSameInBothForms) {
    EXPECT_EQ(ToText(SampleBytes()), SampleText);
    EXPECT_EQ(ToBinary(SampleText), SampleBytes());
    EXPECT_EQ(ToBinary(SampleBytes()), SampleBytes());
    EXPECT_EQ(ToText(SampleText), SampleText);
}

TEST(StreamForms, ValuesThatBothFormsHoldAlike) {
    const struct {
        std::string Bytes;
        std::string Text;
    } rows[] = {
        {Hex("02 7F"), "127"},
        {Hex("02 80"), "-128"},
        {Hex("03 8000"), "128"},
        {Hex("03 0080"), "-32768"},
        {Hex("04 00800000"), "32768"},
        {Hex("04 00000080"), "-2147483648"},
        {Hex("13 0000008000000000"), "2147483648"},
        {Hex("13 0000000000000080"), "-9223372036854775808"},
        {Hex("05 00000000000000000000"), "0.0"},
        {Hex("05 00000000000000000080"), "-0.0"},
        {Hex("05 0000000000000080FF3F"), "1.0"},
        {Hex("05 00F8FFFFFFFFFFFFFE43"), "1.7976931348623157e+308"},
        {Hex("05 0000000000000080CD3B"), "5e-324"},
        {Hex("05 00F0FFFFFFFFFFFF003C"), "2.225073858507201e-308"},
        {Hex("05 0000000000000080FF7F"), "+INF"},
        {Hex("05 0000000000000080FFFF"), "-INF"},
        {Hex("06 00"), "''"},
        {Hex("06 02 0D0A"), "#13#10"},
        {Hex("06 03 274127"), "'''A'''"},
        {Hex("14 04000000 F09F9880"), "#55357#56832"},
        {Hex("14 03000000 EFBBBF"), "#65279"},
        {Hex("12 02000000 00D84100"), "#55296'A'"},
        {Hex("0A 00000000"), "{}"},
        {Hex("0B 00"), "[]"},
        {Hex("0E 00"), "<>"},
        {Hex("01 00"), "()"},
        {Hex("00"), "Null"},
        {Hex("08"), "False"},
        {Hex("0E 0205 01 00 00"), "<\n    item [5]\n    end>"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TextOfValue(row.Bytes), row.Text);
        EXPECT_EQ(BytesOfValue(row.Text), row.Bytes) << row.Text;
    }
}

TEST(StreamForms, ListsHoldListsAndEveryOtherValue) {
    const std::string bytes = Hex("01 0201 01 09 0202 00 060141 0E 01 00 00 00");
    const std::string text =
        "(\n    1\n    (\n      True\n      2)\n    'A'\n    <\n      item\n      end>)";
    EXPECT_EQ(TextOfValue(bytes), text);
    EXPECT_EQ(BytesOfValue(text), bytes);
}

TEST(StreamForms, ValuesThatAreReadAndNotWritten) {
    const struct {
        std::string Bytes;
        const char* Text;
    } rows[] = {
        {Hex("0F 0000C03F"), "1.5"},              // single
        {Hex("15 000000000000F83F"), "1.5"},      // double
        {Hex("11 000000000000F83F"), "1.5"},      // date
        {Hex("10 983A000000000000"), "1.5"},      // currency
        {Hex("06 02 E941"), "#233'A'"},           // Latin-1
        {Hex("06 03 C3A941"), "#233'A'"},         // UTF-8
        {Hex("06 02 41C3"), "'A'#195"},           // cut UTF-8 is Latin-1
        {Hex("0C 02000000 E941"), "#233'A'"},     // long Latin-1
        {Hex("12 02000000 E9004100"), "#233'A'"}, // wide
        {Hex("04 01000000"), "1"},                // not the smallest
        {Hex("07 04 54525545"), "True"},          // "TRUE" as identifier
        {Hex("07 03 4E494C"), "nil"},             //
        {Hex("05 FFFFFFFFFFFFFFFFFE43"), "+INF"}, // rounds up beyond a double
        {Hex("05 FFFFFFFFFFFFFFFFFE7F"), "+INF"}, //
        {Hex("05 FFFFFFFFFFFFFFFF0100"), "0.0"},  //
        {Hex("05 01000000000000C0FF3F"), "1.5"},  // more bits than a double
        {Hex("05 00000000000000600040"), "1.5"},  // no leading one
        {Hex("05 00000000000000C0FFFF"), "-NAN"}, //
    };
    for (const auto& row : rows) EXPECT_EQ(TextOfValue(row.Bytes), row.Text);
}

TEST(StreamForms, TextThatIsReadAndNotWritten) {
    const struct {
        const char* Text;
        std::string Bytes;
    } rows[] = {
        {"$FF", Hex("03 FF00")},
        {"$FFFFFFFFFFFFFFFF", Hex("02 FF")},
        {"+5", Hex("02 05")},
        {"   1.50000000000000E+0000", Hex("05 00000000000000C0FF3F")},
        {"15E-1", Hex("05 00000000000000C0FF3F")},
        {"1.18973149535723E+4932", Hex("05 0000000000000080FF7F")},
        {"1e-400", Hex("05 00000000000000000000")},
        {"+nan", Hex("05 00000000000000C0FF7F")},
        {"'A' +\n 'B'\n + #67", Hex("06 03 414243")},
        {"#$41", Hex("06 01 41")},
        {"'\xC3\xA9'", Hex("14 02000000 C3A9")},
        {"{ 0a\n0B }", Hex("0A 02000000 0A0B")},
        {"TRUE", Hex("09")},
        {"NIL", Hex("0D")},
        {"[A,B , C]", Hex("0B 0141 0142 0143 00")},
    };
    for (const auto& row : rows) EXPECT_EQ(BytesOfValue(row.Text), row.Bytes) << row.Text;
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
