#include "viewer/CommandLine.h"

#include <zep/framework/Exception.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TCommandLine Parse(const QString& arguments) {
    return ParseCommandLine(
        (QStringLiteral("zepview ") + arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(CommandLine, FilesOpenInAWindow) {
    const TCommandLine line = Parse(QStringLiteral("a.nc --plain b.tap"));
    EXPECT_EQ(line.Task, TCommandLine::TTask::Window);
    EXPECT_EQ(line.Files, (QStringList{QStringLiteral("a.nc"), QStringLiteral("b.tap")}));
    EXPECT_TRUE(line.Plain);
    EXPECT_TRUE(Parse({}).Files.isEmpty());
    EXPECT_FALSE(Parse({}).Plain);
}

TEST(CommandLine, TasksAreChosenByTheirOption) {
    using enum TCommandLine::TTask;
    struct TRow {
        const char* Arguments;
        TCommandLine::TTask Task;
        bool Json;
    };
    const TRow rows[] = {
        {"--info a.nc", Info, false},
        {"a.nc --info --json", Info, true},
        {"--picture o.png a.nc", Picture, false},
        {"-v", Version, false},
        {"--version --info", Version, false},
        {"--help --json", Help, false},
        {"-- --info", Window, false},
    };
    for (const TRow& row : rows) {
        const TCommandLine line = Parse(QLatin1String(row.Arguments));
        EXPECT_EQ(line.Task, row.Task) << row.Arguments;
        EXPECT_EQ(line.Json, row.Json) << row.Arguments;
    }
}

TEST(CommandLine, PicturesTakeSizeAndDirection) {
    const TCommandLine plain = Parse(QStringLiteral("--picture o.png a.nc"));
    EXPECT_EQ(plain.PictureFile, QStringLiteral("o.png"));
    EXPECT_EQ(plain.PictureSize, QSize(1280, 960));
    EXPECT_FALSE(plain.Direction);
    const TCommandLine full =
        Parse(QStringLiteral("--picture o.png --size 16384X1 --view right a.nc"));
    EXPECT_EQ(full.PictureSize, QSize(16384, 1));
    EXPECT_EQ(full.Direction, TDirection::Right);
    EXPECT_EQ(plain.Camera, QString());
    EXPECT_EQ(Parse(QStringLiteral("--picture o.png --camera Eye a.3ds")).Camera,
              QStringLiteral("Eye"));
    EXPECT_FALSE(plain.Shadows || plain.Ground);
    EXPECT_TRUE(Parse(QStringLiteral("--picture o.png --shadows a.3ds")).Shadows);
    EXPECT_TRUE(Parse(QStringLiteral("--picture o.png --ground a.3ds")).Ground);
}

TEST(CommandLine, MistakesAreNamed) {
    struct TRow {
        const char* Arguments;
        const char* Message;
    };
    const char* const sizes = "--size takes WIDTHxHEIGHT, each from 1 to 16384, but found \"%1\".";
    const TRow rows[] = {
        {"--wrong", "Unknown option 'wrong'."},
        {"--info", "--info takes exactly one file, but found 0."},
        {"--info a b", "--info takes exactly one file, but found 2."},
        {"--picture o.png", "--picture takes exactly one file, but found 0."},
        {"--picture= a.nc", "--picture takes the name of the picture to write."},
        {"--json a.nc", "--json only goes with --info."},
        {"--size 10x10 a.nc", "--size only goes with --picture."},
        {"--view top --info a.nc", "--view only goes with --picture."},
        {"--camera Eye a.3ds", "--camera only goes with --picture."},
        {"--shadows a.3ds", "--shadows only goes with --picture."},
        {"--ground a.3ds", "--ground only goes with --picture."},
        {"--picture o.png --camera Eye --view top a.3ds",
         "--view and --camera do not go together."},
        {"--info --picture o.png a.nc", "--info and --picture do not go together."},
        {"--picture o.png --view above a.nc",
         "--view takes iso, top, front, right, left, back or bottom, but found \"above\"."},
    };
    const auto message = [](const QString& arguments) {
        try {
            Parse(arguments);
        } catch (const Exception& error) {
            return error.Message();
        }
        return QStringLiteral("none");
    };
    for (const TRow& row : rows)
        EXPECT_EQ(message(QLatin1String(row.Arguments)), QLatin1String(row.Message));
    for (const char* size : {"10", "0x10", "10x-1", "10x20x30", "16385x1", "axb", "1e3x1", "x"})
        EXPECT_EQ(message(QStringLiteral("--picture o.png a.nc --size ") + QLatin1String(size)),
                  QString(QLatin1String(sizes)).arg(QLatin1String(size)));
}

} // namespace
} // namespace ZEP
