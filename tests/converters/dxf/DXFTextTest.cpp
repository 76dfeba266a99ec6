#include <zep/converters/dxf/Text.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(DXFText, ReplacesPercentCodes) {
    const struct {
        const char16_t* Text;
        const char16_t* Plain;
    } rows[] = {
        {u"", u""},
        {u"100%", u"100%"},
        {u"%%c20 %%C20", u"Ø20 Ø20"},
        {u"45%%d %%p0.1", u"45° ±0.1"},
        {u"50%%%", u"50%"},
        {u"%%uunder%%u %%Oover%%o %%kstruck", u"under over struck"},
        {u"%%065%%66x%%0671", u"ABxC1"},
        {u"%%999", u"\x3E7"},
        {u"%%z %% %%", u"%%z %% %%"},
        {u"%%", u"%%"},
        {u"%%%%c", u"%%c"},
        {u"a\\Pb{c}", u"a\\Pb{c}"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PlainDXFText(QString::fromUtf16(row.Text)), QString::fromUtf16(row.Plain));
}

TEST(DXFText, LeavesOutInlineCodes) {
    const struct {
        const char16_t* Text;
        QStringList Lines;
    } rows[] = {
        {u"", {""}},
        {u"one", {"one"}},
        {u"one\\Ptwo\\P\\Pfour\\P", {"one", "two", "", "four", ""}},
        {u"one\\Ntwo\\Xthree", {"one", "two", "three"}},
        {u"one^Jtwo^M^Jthree\nfour\r\nfive", {"one", "two", "three", "four", "five"}},
        {u"a^Ib^ c^2", {"a\tb^c^2"}},
        {u"\\A1;x\\fArial|b0|i1;y\\H2.5x;\\W0.8;\\Q15;\\T1.1;\\C1;\\c255;z", {"xyz"}},
        {u"\\pxqc,i1;text", {"text"}},
        {u"{\\Lunder\\l \\Oover\\o \\Kstruck\\k}", {"under over struck"}},
        {u"\\S1/2; \\S1#2; \\S+0.1^-0.2; m\\S2^ ; x\\S^ 2;", {"1/2 1/2 +0.1/-0.2 m2 x2"}},
        {u"\\S1\\/2/3\\;4;x", {"1/2/3;4x"}},
        {u"\\S1/2", {"1/2"}},
        {u"\\S", {""}},
        {u"\\{a\\} \\\\P", {"{a} \\P"}},
        {u"a\\~b", {QStringLiteral("a\u00A0b")}},
        {u"%%c10 45%%d%%%", {QStringLiteral("Ø10 45°%")}},
        {u"\\q \\", {"\\q \\"}},
        {u"\\fArial no end", {"\\fArial no end"}},
        {u"{{{}}", {""}},
        {u"^", {"^"}},
    };
    for (const auto& row : rows) {
        const QString text = QString::fromUtf16(row.Text);
        EXPECT_EQ(PlainDXFLines(text), row.Lines) << text.toStdString();
    }
}

TEST(DXFText, IsLinearInCodesWithoutEnd) {
    const QString text = QStringLiteral("\\f").repeated(500'000);
    EXPECT_EQ(PlainDXFLines(text), QStringList(text));
    EXPECT_EQ(PlainDXFLines(QStringLiteral("\\S").repeated(500'000)).size(), 1);
}

} // namespace
} // namespace ZEP
