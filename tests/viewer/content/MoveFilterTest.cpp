#include "viewer/content/MoveFilter.h"

#include <zep/converters/rs274d/Interpreter.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(MoveFilter, LeavesOutWhatDoesNotPass) {
    TToolPath path;
    TRS274DReport report;
    TRS274DInterpreter({}, path, report)
        .Run("G0 Z5\nG1 Z-1 F100\nG4 P1\nG2 X10 I5\nT1 M6\nG1 X20 Z-2\nG81 X30 Z-3 R0\nG80 G0 Z9");
    const std::tuple<const char*, TMoveFilter, std::string> rows[] = {
        // Rapid, feed, arc, feed, rapid, rapid to R, drill, rapid, rapid.
        {"no rapids", {.HiddenKinds = {true}}, "-+++--+--"},
        {"no feeds, nor dwells", {.HiddenKinds = {false, true, false, false, true}}, "+-+-+++++"},
        {"no arcs, nor drilling", {.HiddenKinds = {false, false, true, true}}, "++-+++-++"},
        {"one tool", {.HiddenTools = {1}}, "+++------"},
        {"heights", {.Z = {{-2, -1}}}, "--++-----"},
        {"lines", {.Lines = {{2, 6}}}, "-+++-----"},
        {"all of it", {.HiddenKinds = {true}, .Z = {{-3, 0}}, .Lines = {{6, 9}}}, "---+--+--"}};
    EXPECT_EQ(HiddenObjects(path, {}), nullptr);
    for (const auto& [name, filter, expected] : rows) {
        std::string shown;
        const auto hidden = HiddenObjects(path, filter);
        for (const bool isHidden : *hidden) shown += isHidden ? '-' : '+';
        EXPECT_EQ(shown, expected) << name;
    }
}

} // namespace
} // namespace ZEP
