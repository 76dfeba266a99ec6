#include "viewer/CommandLine.h"
#include "tests/Cases.h"
#include "tests/ErrorOf.h"

namespace ZEP {
namespace {

/// What is asked for: the task, the files in brackets, and what is not as it is by default.
std::string AskedFor(const TCommandLine& line) {
    constexpr const char* Tasks[] = {"window", "info",    "picture", "print",
                                     "save",   "version", "help"};
    constexpr const char* Directions[] = {"iso", "top", "front", "right", "left", "back", "bottom"};
    std::string text = Tasks[static_cast<int>(line.Task)];
    text += " [" + line.Files.join(u' ').toStdString() + "]";
    if (line.Json) text += " json";
    if (line.Plain) text += " plain";
    if (!line.PictureFile.isEmpty())
        text += " " + line.PictureFile.toStdString() + " " +
                std::to_string(line.Picture.Size.width()) + "x" +
                std::to_string(line.Picture.Size.height());
    if (line.Picture.Scale != 1)
        text += " scale " + QString::number(line.Picture.Scale).toStdString();
    if (line.Picture.Transparent) text += " transparent";
    if (!line.PaperFile.isEmpty())
        text += " " + line.PaperFile.toStdString() + " " + line.Paper.Page.name().toStdString();
    if (line.Paper.Scale) text += " scale " + QString::number(*line.Paper.Scale).toStdString();
    if (!line.Picture.Guides || !line.Paper.Guides) text += " bare";
    if (line.Direction) text += std::string(" ") + Directions[static_cast<int>(*line.Direction)];
    if (!line.Camera.isEmpty()) text += " camera " + line.Camera.toStdString();
    if (!line.Layout.isEmpty()) text += " layout " + line.Layout.toStdString();
    if (line.Shadows) text += " shadows";
    if (line.Ground) text += " ground";
    return line.SavedFile.isEmpty() ? text : text + " " + line.SavedFile.toStdString();
}

TEST(CommandLine, IsUnderstoodOrItsMistakeNamed) {
    ExpectCases("viewer/arguments.txt", [](const TCase& c) {
        return EachLine(c, [](const std::string& arguments) {
            const QString all = QStringLiteral("zepview ") + QString::fromStdString(arguments);
            TCommandLine line;
            const std::string error = ErrorOf(
                [&] { line = ParseCommandLine(all.split(QLatin1Char(' '), Qt::SkipEmptyParts)); });
            return error.empty() ? AskedFor(line) : error;
        });
    });
}

} // namespace
} // namespace ZEP
