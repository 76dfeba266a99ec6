#include "tests/framework/stream/StreamText.h"
#include <zep/framework/stream/TextSource.h>

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using testing::HasSubstr;

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
    constexpr int Deep = 100'000;
    const std::string head = WithValue("").substr(0, 9);
    for (const std::string& bytes :
         {"TPF0" + Times(Short("T") + std::string(2, '\0'), Deep), head + std::string(Deep, '\1'),
          head + Times(Hex("0E 01 0150"), Deep)})
        EXPECT_THAT(ToText(bytes), HasSubstr("nested deeper than 1000 levels"));
    for (const std::string& text : {Times("object T ", Deep), "object T P = " + Times("(", Deep),
                                    "object T P = " + Times("<item P = ", Deep)})
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
