#include <zep/framework/CompactText.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

static_assert(sizeof(TCompactText) == sizeof(void*));

TEST(CompactText, AnswersWhatItWasGivenAndComparesWithoutCase) {
    TCompactText text;
    for (const QString& value :
         {QString(), QStringLiteral("Line 12"), QStringLiteral("Grö ÿ"), QStringLiteral("Ωmega"),
          QStringLiteral("a"), QString(1000, u'Я')}) {
        text.Set(value);
        EXPECT_EQ(text.ToString(), value);
        EXPECT_TRUE(text.IsSameWithoutCase(value.toLower()));
        EXPECT_TRUE(text.IsSameWithoutCase(value.toUpper())) << qPrintable(value);
        EXPECT_FALSE(text.IsSameWithoutCase(value + u'x'));
        TCompactText copy;
        copy = text;
        EXPECT_EQ(copy.ToString(), value);
        text.Set(value.toUtf8().constData());
        EXPECT_EQ(text.ToString(), value);
    }
    text.Set(QLatin1String("\xe9", 1));
    EXPECT_EQ(text.ToString(), QStringLiteral("é"));
}

} // namespace
} // namespace ZEP
