#include "viewer/Display.h"

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(Display, ProblemsAreToldBeforeQtMeetsThem) {
    struct TRow {
        const char* Display;
        const char* Wayland;
        const char* Platform;
        bool Reaches;
        const char* Problem; // what it begins with; empty: none
    };
    const TRow rows[] = {
        {":0", "", "", true, ""},
        {":0", "wayland-0", "", true, ""},
        {":0", "", "xcb", true, ""},
        {"", "", "", true, "There is no display: DISPLAY is not set."},
        {":7", "", "", false, "The display \":7\" cannot be reached."},
        {"", "wayland-0", "", true, "Under Wayland the view is drawn through XWayland"},
        {":0", "wayland-0", "wayland", true, "The view is drawn through X11"},
        {"", "", "offscreen", false, "The view is drawn through X11"},
    };
    for (const TRow& row : rows) {
        const QString problem = DisplayProblem(
            {QLatin1String(row.Display), QLatin1String(row.Wayland), QLatin1String(row.Platform)},
            [&] { return row.Reaches; });
        EXPECT_EQ(problem.indexOf(QLatin1String(row.Problem)), 0) << problem.toStdString();
        EXPECT_EQ(problem.isEmpty(), *row.Problem == '\0') << problem.toStdString();
    }
}

} // namespace
} // namespace ZEP
