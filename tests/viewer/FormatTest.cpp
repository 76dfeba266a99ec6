#include "viewer/Format.h"

#include "framework/Exception.h"

#include <gtest/gtest.h>

#include <QDir>

namespace ZEP {
namespace {

TEST(Format, SuffixComesFirstThenTheBeginning) {
    struct TRow {
        const char* Name;
        QByteArray Head;
        bool IsProgram;
    };
    const TRow rows[] = {
        {"part.nc", "", true},
        {"PART.NGC", "anything", true},
        {"a.tap", "", true},
        {"a.gcode", "", true},
        {"a.b.cnc", "", true},
        {"part.txt", "%\nO0001", true},
        {"part", "\r\r\n  (a comment)\r\r\n; another\r\r\nN10 G0 X1", true},
        {"part", "(head) g 1 x-.5", true},
        {"part", "/ N5 M6", true},
        {"part.txt", "Dear reader", false},
        {"part.txt", "12.5 13.5", false},
        {"part.txt", "", false},
        {"part.txt", "(only a comment)", false},
        {"drawing.dxf", "0\nSECTION\n", false},
        {"part.bin", QByteArray("G1\0X1", 5), false},
    };
    for (const TRow& row : rows)
        EXPECT_EQ(FormatOf(QLatin1String(row.Name), row.Head) == TFileFormat::RS274D, row.IsProgram)
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

} // namespace
} // namespace ZEP
