#include "tests/framework/stream/StreamText.h"
#include <zep/framework/stream/TextSource.h>

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using testing::HasSubstr;

TEST(StreamErrors, OfTheTextFormNameLineAndColumn) {
    const struct {
        const char* Text;
        const char* Error;
    } rows[] = {
        {"object T\n  P = \n=1 end", "line 3, column 1: expected a value, but found ="},
        {"object T\n  P = 1\n", "line 3, column 1: expected a property, object or end, but found "
                                "the end"},
        {"object T\r\n  P = 'a\r\nend", "line 2, column 7: the string does not end on its line"},
        {"object T\r  P = 'a' + 5\rend", "line 2, column 13: expected the next piece of a string "
                                         "after the +"},
        {"object T P = {0g} end", "line 1, column 15: expected two hexadecimal digits or }"},
        {"object T P = {00", "line 1, column 14: the binary data does not end"},
        {"object T P = [A B] end", "line 1, column 17: expected , or ], but found B"},
        {"object T P = [A,] end", "line 1, column 17: expected a member of a set, but found ]"},
        {"object T P = <item X = 1> end", "line 1, column 25: expected a property or end, but "
                                          "found >"},
        {"object T P = <1> end", "line 1, column 15: expected item or >, but found 1"},
        {"object T P = (Null) end", "line 1, column 15: expected a value that a list can hold, but "
                                    "found Null"},
        {"object T object U end P = 1 end", "line 1, column 23: expected object or end, but found "
                                            "P"},
        {"object T P = 99999999999999999999 end", "line 1, column 14: expected an integer of at "
                                                  "most 64 bits"},
        {"object T P = 12ab end", "line 1, column 14: expected an integer of at most 64 bits"},
        {"object T P = 1.5x end", "line 1, column 14: expected a number"},
        {"object T P = 1e99999 end", "line 1, column 14: expected a number within range"},
        {"object T P = #70000 end", "line 1, column 14: expected a character's code from 0 to "
                                    "65535 after the #"},
        {"object T P = -x end", "line 1, column 14: expected a number after the sign"},
        {"object : T end", "line 1, column 8: expected a name or a class, but found :"},
        {"object a..b end", "line 1, column 8: expected a name"},
        {"object T end end", "line 1, column 14: expected the end of the stream, but found end"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ToBinary(row.Text), row.Error);
        EXPECT_EQ(ToText(row.Text), row.Error);
    }
}

TEST(StreamErrors, OfTheBinaryFormNameTheOffset) {
    const std::string head = "TPF0" + Short("T") + Short("");
    const struct {
        std::string Bytes;
        const char* Error;
    } rows[] = {
        {"", "offset 0: expected a component stream, which begins with \"TPF0\""},
        {"TPF", "offset 0: expected a component stream, which begins with \"TPF0\""},
        {"TPF0", "offset 0: expected a component of 1 bytes, but 0 are left"},
        {head, "offset 7: expected a property name of 1 bytes, but 0 are left"},
        {head + Short("P"), "offset 7: expected a value of 1 bytes, but 0 are left"},
        {head + Short("P") + Hex("16"), "offset 7: no value has the tag 22"},
        {head + Short("P") + Hex("FF"), "offset 7: no value has the tag 255"},
        {head + Short("P") + Hex("0C FFFFFFFF 41"),
         "offset 7: expected a string of 4294967295 bytes, but 1 are left"},
        {head + Short("P") + Hex("12 FFFFFFFF 41"),
         "offset 7: expected a string of 8589934590 bytes, but 1 are left"},
        {head + Short("P") + Hex("0A FFFFFFFF"),
         "offset 7: expected binary data of 4294967295 bytes, but 0 are left"},
        {head + Short("P P"), "offset 7: expected a property name, but found \"P P\""},
        {head + Short("P") + Hex("07 00"), "offset 7: expected an identifier, but found \"\""},
        {head + Short("P") + Hex("0E 05"), "offset 10: no value has the tag 5"},
        {head + Short("P") + Hex("0E 0201 02"), "offset 10: expected an item, but found tag 2"},
        {head + Short("P") + Hex("01 07 04 4E756C6C"),
         "offset 10: expected a value, but a list cannot hold Null"},
        {"TPF0" + Hex("00 00 00"), "offset 0: expected a class name, but found \"\""},
        {head + Hex("00 00 41"), "offset 9: expected the end of the stream, but 1 bytes follow"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ToText(row.Bytes), row.Error);
        EXPECT_EQ(ToBinary(row.Bytes), row.Error);
    }
}

const char* const Everything = "object A: T\n  B = True\n  D = 1.5\n  E = (1 2 'x')\n"
                               "  S = [a, b]\n  V = {00FF}\n  C = <\n    item\n      X = 1\n"
                               "    end>\n  object U\n  end\nend\n";

TEST(StreamErrors, EveryCutOfAStreamIsFound) {
    const std::string binary = ToBinary(Everything);
    ASSERT_EQ(ToBinary(ToText(binary)), binary);
    for (std::size_t size = 0; size < binary.size(); ++size)
        EXPECT_THAT(ToText(binary.substr(0, size)), testing::StartsWith("offset ")) << size;
    const std::string text = Everything;
    for (std::size_t size = 0; size < text.size() - 1; ++size) {
        const std::string cut = text.substr(0, size);
        TTextSource source(cut);
        EXPECT_THROW(CheckStructure(source), TStreamError) << cut;
    }
}

TEST(StreamErrors, EndlessNestingIsRefusedInBothForms) {
    const auto times = [](const std::string& piece, int count) {
        std::string text;
        for (int i = 0; i < count; ++i) text += piece;
        return text;
    };
    constexpr int Deep = 100'000;
    const std::string head = WithValue("").substr(0, 9);
    for (const std::string& bytes :
         {"TPF0" + times(Short("T") + std::string(2, '\0'), Deep), head + std::string(Deep, '\1'),
          head + times(Hex("0E 01 0150"), Deep)})
        EXPECT_THAT(ToText(bytes), HasSubstr("nested deeper than 1000 levels"));
    for (const std::string& text : {times("object T ", Deep), "object T P = " + times("(", Deep),
                                    "object T P = " + times("<item P = ", Deep)})
        EXPECT_THAT(ToBinary(text), HasSubstr("nested deeper than 1000 levels"));
}

TEST(StreamErrors, TheFormIsRecognisedByContent) {
    const struct {
        const char* Head;
        std::optional<TStreamForm> Form;
    } rows[] = {
        {"TPF0", TStreamForm::Binary},
        {"TPF", {}},
        {"object A: T", TStreamForm::Text},
        {"\xEF\xBB\xBF\r\n  INHERITED", TStreamForm::Text},
        {"inline x", TStreamForm::Text},
        {"objects", {}},
        {"G0 X1", {}},
        {"", {}},
        {"{", {}},
        {"%", {}},
    };
    for (const auto& row : rows) EXPECT_EQ(StreamFormOf(row.Head), row.Form) << row.Head;
}

} // namespace
} // namespace ZEP
