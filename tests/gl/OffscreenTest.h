#pragma once

#include "tests/gl/OffscreenContext.h"

#include <gtest/gtest.h>

#include <optional>

namespace ZEP {

/// A test with a context of its own; skipped without a display.
class OffscreenTest : public testing::Test {
protected:
    explicit OffscreenTest(int width = 256, int height = 256) {
        if (OffscreenContext::HasDisplay()) m_context.emplace(width, height);
    }

    void SetUp() override {
        if (!m_context) GTEST_SKIP() << "there is no X display";
    }

    OffscreenContext& Context() { return *m_context; }

private:
    std::optional<OffscreenContext> m_context;
};

} // namespace ZEP
