#include "tests/gl/CallRecorder.h"

#include <GL/gl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

GlCalls* Innermost = nullptr;

bool IsCallOf(std::string_view call, std::string_view name) {
    if (name.ends_with('*')) return call.starts_with(name.substr(0, name.size() - 1));
    return call.substr(0, call.find('(')) == name;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    return text;
}

} // namespace

GlCalls::GlCalls() : m_outer(std::exchange(Innermost, this)) {}

GlCalls::~GlCalls() {
    Innermost = m_outer;
}

std::vector<std::string> GlCalls::Of(std::initializer_list<std::string_view> names) const {
    std::vector<std::string> result;
    for (const std::string& call : m_calls)
        if (std::ranges::any_of(names, [&](std::string_view name) { return IsCallOf(call, name); }))
            result.push_back(call);
    return result;
}

void GlCalls::Note(std::string line) {
    if (Innermost) Innermost->m_calls.push_back(std::move(line));
}

bool GlCalls::IsRecording() {
    return Innermost != nullptr;
}

void ExpectCalls(const std::vector<std::string>& calls, const std::vector<std::string>& expected,
                 std::experimental::source_location where) {
    const testing::ScopedTrace trace(where.file_name(), static_cast<int>(where.line()), "calls");
    EXPECT_FALSE(expected.empty()) << "no call is expected: say so with ExpectNoCalls";
    EXPECT_EQ(Joined(calls), Joined(expected));
}

void ExpectCalls(const GlCalls& calls, const std::vector<std::string>& expected,
                 std::experimental::source_location where) {
    ExpectCalls(calls.List(), expected, where);
}

void ExpectNoCalls(const GlCalls& calls, std::experimental::source_location where) {
    const testing::ScopedTrace trace(where.file_name(), static_cast<int>(where.line()), "calls");
    EXPECT_EQ(Joined(calls.List()), "");
    const GlCalls probe;
    glFlush();
    EXPECT_EQ(probe.List(), std::vector<std::string>{"glFlush()"}) << "nothing is recorded at all";
}

} // namespace ZEP
