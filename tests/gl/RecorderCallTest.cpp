#include "tests/gl/CallRecorder.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(Recorder, AnEmptyRecordIsNoProof) {
    EXPECT_NONFATAL_FAILURE(ExpectCalls(std::vector<std::string>(), {}), "ExpectNoCalls");
    EXPECT_NONFATAL_FAILURE(ExpectCalls(std::vector<std::string>(), {"glEnd()"}), "glEnd");
    const GlCalls calls;
    ExpectNoCalls(calls);
}

} // namespace
} // namespace ZEP
