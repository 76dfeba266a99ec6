#include "viewer/files/Format.h"

#include "tests/Cases.h"
#include "tests/ErrorOf.h"

namespace ZEP {
namespace {

/// A case begins with the name of the file, in quotes; its input is how the file begins, without
/// the line end of the last line.
TEST(Format, TheBeginningComesFirstThenTheSuffixThenWhatTheTextLooksLike) {
    ExpectCases("viewer/formats.txt", [](const TCase& c) {
        const QString name = QString::fromStdString(c.Name).section(u'"', 1, 1);
        const std::string head = c.Input.substr(0, c.Input.size() - 1);
        return FormatName(FormatOf(name, QByteArrayView(head.data(), qsizetype(head.size()))))
            .toStdString();
    });
}

TEST(Format, WhatCannotBeReadIsNamed) {
    for (const QString& file : {QDir::tempPath(), QStringLiteral("no such file.nc")}) {
        const std::string error = ToldOf([&] { static_cast<void>(FormatOf(file)); });
        EXPECT_TRUE(error.starts_with(file.toStdString())) << error;
    }
}

TEST(Format, TheDialogOffersEachFormat) {
    const QString models = PatternsOf(TFileFormat::Model).join(u' ');
    EXPECT_TRUE(models.contains(QStringLiteral("*.stl")));
    EXPECT_EQ(OpenFilters(),
              QStringLiteral("All of these (*.nc *.ngc *.tap *.gcode *.cnc *.dxf *.3ds %1 *.zep "
                             "*.zept);;Programs (*.nc *.ngc *.tap *.gcode *.cnc);;"
                             "Drawings (*.dxf);;3DS models (*.3ds);;Models (%1);;"
                             "Scenes (*.zep *.zept);;All files (*)")
                  .arg(models));
}

} // namespace
} // namespace ZEP
