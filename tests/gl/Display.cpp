#include "tests/gl/OffscreenContext.h"

#include <gtest/gtest.h>

// In every ring that draws: without a display its other tests are skipped, and this one says so.
TEST(Display, IsThere) {
    EXPECT_TRUE(ZEP::OffscreenContext::HasDisplay())
        << "No X display: install xvfb, or set ZEP_TEST_DISPLAY to a display that may be used.";
}
