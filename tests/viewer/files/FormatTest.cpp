#include "viewer/files/Format.h"

#include "tests/viewer/SampleFiles.h"
#include <zep/framework/Exception.h>

#include <gtest/gtest.h>

#include <QDir>

namespace ZEP {
namespace {

TEST(Format, TheBeginningComesFirstThenTheSuffixThenWhatTheTextLooksLike) {
    using enum TFileFormat;
    struct TRow {
        const char* Name;
        QByteArray Head;
        TFileFormat Format;
    };
    const TRow rows[] = {
        {"part.nc", "", RS274D},
        {"PART.NGC", "anything", RS274D},
        {"a.tap", "", RS274D},
        {"a.gcode", "", RS274D},
        {"a.b.cnc", "", RS274D},
        {"part.txt", "%\nO0001", RS274D},
        {"part", "\r\r\n  (a comment)\r\r\n; another\r\r\nN10 G0 X1", RS274D},
        {"part", "(head) g 1 x-.5", RS274D},
        {"part", "/ N5 M6", RS274D},
        {"part.txt", "Dear reader", Unknown},
        {"part.txt", "12.5 13.5", Unknown},
        {"part.txt", "", Unknown},
        {"part.txt", "(only a comment)", Unknown},
        {"part.bin", QByteArray("G1\0X1", 5), Unknown},
        {"drawing.dxf", "0\nSECTION\n", DXF},
        {"drawing", "  0\r\nSECTION\r\n  2\r\nHEADER\r\n", DXF},
        {"drawing.nc",
         "\xEF\xBB\xBF"
         "999\nmade by hand\n999\n0\n0\nSECTION\n",
         DXF},
        {"drawing", "0\rSECTION\r2\rENTITIES", DXF},
        {"drawing", QByteArray("AutoCAD Binary DXF\r\n\x1a\0", 22), DXF},
        {"drawing.DXF", "Dear reader", DXF},
        {"a.txt", "0\nEOF\n", Unknown},
        {"a.txt", "999\nSECTION\n", Unknown},
        {"model", Sample::Model({}), F3DS},
        {"model.nc", Sample::Model({}), F3DS},
        {"model.dxf", QByteArray("MM\x06\0\0\0", 6), F3DS},
        {"model.3DS", "version https://example.org", F3DS},
        {"a.txt", QByteArray("MM\x05\0\0\0", 6), Unknown},
        {"a.txt", QByteArray("MM\0\0\x01", 5), Unknown},
        {"a.txt", "MMXXVI was a year of text", Unknown},
        {"scene.dxf", "object TZEPScene\nend\n", Scene},
        {"scene.3ds", "TPF0\x09TZEPScene", Scene},
    };
    for (const TRow& row : rows)
        EXPECT_EQ(FormatOf(QLatin1String(row.Name), row.Head), row.Format)
            << row.Name << ": " << row.Head.constData();
}

TEST(Format, WhatCannotBeReadIsNamed) {
    for (const QString& file : {QDir::tempPath(), QStringLiteral("no such file.nc")}) {
        try {
            static_cast<void>(FormatOf(file));
            ADD_FAILURE() << file.toStdString();
        } catch (const Exception& error) {
            EXPECT_TRUE(error.Message().startsWith(file)) << error.what();
        }
    }
}

TEST(Format, TheDialogOffersEachFormat) {
    EXPECT_EQ(OpenFilters(),
              QStringLiteral("All of these (*.nc *.ngc *.tap *.gcode *.cnc *.dxf *.3ds *.zep "
                             "*.zept);;Programs (*.nc *.ngc *.tap *.gcode *.cnc);;"
                             "Drawings (*.dxf);;Models (*.3ds);;Scenes (*.zep *.zept);;"
                             "All files (*)"));
}

} // namespace
} // namespace ZEP
