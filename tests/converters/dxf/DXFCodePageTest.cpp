#include <zep/converters/dxf/CodePage.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(DXFCodePage, DecodesByPageAndVersion) {
    const struct {
        const char* Page;
        const char* Version;
        const char* Bytes;
        const char16_t* Text;
    } rows[] = {
        {"", "", "Layer 1", u"Layer 1"},
        {"", "", "", u""},
        {"", "", "\xC4\xD6\xDC", u"ÄÖÜ"},
        {"ANSI_1252", "AC1015", "\x80", u"€"},
        {"ansi_1252", "AC1015", "\x80", u"€"},
        {"no such page", "AC1015", "\xE4", u"ä"},
        {"ANSI_99999", "AC1015", "\xE4", u"ä"},
        {"ANSI_1250", "AC1015", "\xB9\xE8", u"ąč"},
        {"ANSI_1251", "AC1015", "\xD1\xEB\xEE\xE9", u"Слой"},
        {"ANSI_1253", "AC1015", "\xC1\xE1", u"Αα"},
        {"ANSI_1258", "AC1015", "a\xEC", u"á"}, // the page's accents stand alone
        {"ANSI_874", "AC1015", "\xA1", u"ก"},
        {"dos437", "AC1009", "\x84\xF8", u"ä°"},
        {"DOS850", "AC1012", "\x9D", u"Ø"},
        {"dos866", "AC1009", "\x91\xAB", u"Сл"},
        {"ISO8859-2", "AC1009", "\xB1", u"ą"},
        {"MACINTOSH", "AC1009", "\x8A", u"ä"},
        {"ANSI_932", "AC1015", "\x83\x8C\x83\x43", u"レイ"},
        {"ANSI_936", "AC1015", "\xCD\xBC", u"图"},
        {"GB2312", "AC1015", "\xCD\xBC", u"图"},
        {"ANSI_949", "AC1015", "\xB5\xB5", u"도"},
        {"ANSI_950", "AC1015", "\xB9\xCF", u"圖"},
        {"BIG5", "AC1015", "\xB9\xCF", u"圖"},
        // The bytes of this character are UTF-8, too: of a g with a cedilla.
        {"ANSI_936", "AC1015", "\xC4\xA3", u"模"},
        {"ANSI_936", "AC1021", "\xC4\xA3", u"ģ"},
        {"ANSI_936", "AC1032", "\xE5\x9B\xBE", u"图"},
        {"ANSI_1252", "AC1021", "\xC3\x84", u"Ä"},
        {"ANSI_1252", "AC1015", "\xC3\x84", u"Ä"},
        {"ANSI_1251", "AC1032", "\xD1\xEB\xEE\xE9", u"Слой"},
        {"ANSI_1252", "AC1032", "\xF0\x9F\x98\x80", u"\U0001F600"},
        {"ANSI_1252", "AC1015", "\x81 \xC4", u"\xFFFD Ä"},
        {"ANSI_932", "AC1015", "a\x83", u"a\xFFFD"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(TDXFTextDecoder(row.Page, row.Version).Decode(row.Bytes),
                  QString::fromUtf16(row.Text))
            << row.Page << " " << row.Version << " " << row.Bytes;
}

TEST(DXFCodePage, ReplacesCodesOfCharacters) {
    const struct {
        const char* Bytes;
        const char16_t* Text;
    } rows[] = {
        {"\\U+00C4b", u"Äb"},
        {"a\\u+00c4", u"aÄ"},
        {"\\U+D83D\\U+DE00", u"\U0001F600"},
        {"\xC4\\U+2205\xC4", u"Ä∅Ä"},
        {"\\M+1838C\\M+2B9CF\\M+3B5B5\\M+5CDBC", u"レ圖도图"},
        {"\\M+6CDBC \\M+0CDBC \\M+xCDBC", u"\\M+6CDBC \\M+0CDBC \\M+xCDBC"},
        {"\\U+00C", u"\\U+00C"},
        {"\\U+00G4 \\U+-0C4", u"\\U+00G4 \\U+-0C4"},
        {"\\", u"\\"},
        {"\\\\\\P", u"\\\\\\P"},
        {"\\U+", u"\\U+"},
        {"\\M+1\xC4\xC4\xC4\xC4", u"\\M+1ÄÄÄÄ"},
    };
    const TDXFTextDecoder decoder("ANSI_1252", "AC1015");
    for (const auto& row : rows)
        EXPECT_EQ(decoder.Decode(row.Bytes), QString::fromUtf16(row.Text)) << row.Bytes;
}

TEST(DXFCodePage, KeepsTextsOfAnyLength) {
    const TDXFTextDecoder decoder("ANSI_1251", "AC1015");
    const std::string bytes(10'001, '\xE0');
    EXPECT_EQ(decoder.Decode(bytes), QString(10'001, QChar(u'а')));
    EXPECT_EQ(decoder.Decode("a\xE0"), QStringLiteral("aа")); // nothing is left from before
    const TDXFTextDecoder moved = TDXFTextDecoder("ANSI_1253", "AC1015");
    EXPECT_EQ(moved.Decode("\xE1"), QStringLiteral("α"));
}

} // namespace
} // namespace ZEP
