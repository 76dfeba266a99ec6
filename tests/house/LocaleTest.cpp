#include <QtGlobal>

#include <gtest/gtest.h>

#include <clocale>

// test.sh runs everything once where numbers have decimal commas: that this is so must not be left
// to luck, since an unknown locale silently becomes the plain one.
TEST(Locale, IsTheOneThatIsAskedFor) {
    if (!qEnvironmentVariableIsSet("ZEP_TEST_COMMA")) GTEST_SKIP() << "no locale is asked for";
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}
