#include "viewer/CommandLine.h"

#include "viewer/files/DrawingSaving.h"
#include "viewer/files/Format.h"
#include "viewer/files/Picture.h"
#include "viewer/files/StoredScene.h"
#include <zep/framework/Exception.h>
#include <zep/framework/FileSaving.h>

#include <QCommandLineParser>

#include <array>
#include <utility>

namespace ZEP {

namespace {

struct TOptions {
    QCommandLineOption Help{{QStringLiteral("h"), QStringLiteral("help")},
                            QStringLiteral("Print this help.")};
    QCommandLineOption Version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Print the version.")};
    QCommandLineOption Info{QStringLiteral("info"),
                            QStringLiteral("Print what is in FILE; needs no display.")};
    QCommandLineOption Json{QStringLiteral("json"),
                            QStringLiteral("With --info: print one JSON object.")};
    QCommandLineOption Picture{QStringLiteral("picture"),
                               QStringLiteral("Write a picture of FILE to OUT (.png, .jpg, ...)."),
                               QStringLiteral("OUT")};
    QCommandLineOption Size{QStringLiteral("size"),
                            QStringLiteral("With --picture: size in pixels (1280x960)."),
                            QStringLiteral("WxH")};
    QCommandLineOption View{
        QStringLiteral("view"),
        QStringLiteral(
            "With --picture or --print: look from iso, top, front, right, left, back or bottom "
            "(what is flat from the top, else iso)."),
        QStringLiteral("DIRECTION")};
    QCommandLineOption Camera{
        QStringLiteral("camera"),
        QStringLiteral("With --picture or --print: look through the camera of that name in FILE."),
        QStringLiteral("NAME")};
    QCommandLineOption Layout{
        QStringLiteral("layout"),
        QStringLiteral("Show the sheet of that name in a drawing, in place of the model (--info "
                       "lists them)."),
        QStringLiteral("NAME")};
    QCommandLineOption Shadows{
        QStringLiteral("shadows"),
        QStringLiteral("With --picture or --print: surfaces cast shadows on each other.")};
    QCommandLineOption Ground{
        QStringLiteral("ground"),
        QStringLiteral(
            "With --picture or --print: a floor that mirrors surfaces, and catches their "
            "shadows.")};
    QCommandLineOption Transparent{QStringLiteral("transparent"),
                                   QStringLiteral("With --picture: without the background.")};
    QCommandLineOption NoGuides{
        QStringLiteral("no-guides"),
        QStringLiteral("With --picture or --print: without grid, axes and their directions.")};
    QCommandLineOption Scale{
        QStringLiteral("scale"),
        QStringLiteral("With --picture: how many times as thick lines and letters are (1). With "
                       "--print: the scale, such as 1:2 or 5:1, or fit."),
        QStringLiteral("SCALE")};
    QCommandLineOption Print{
        QStringLiteral("print"),
        QStringLiteral(
            "Print FILE to OUT.pdf, as large as the page takes it or, with --scale, true "
            "to scale on as many pages as that takes."),
        QStringLiteral("OUT.pdf")};
    QCommandLineOption Page{
        QStringLiteral("page"),
        QStringLiteral("With --print: A0 to A6, Letter, Legal, Tabloid, or WIDTHxHEIGHT in "
                       "millimetres (A4)."),
        QStringLiteral("PAGE")};
    QCommandLineOption Save{
        QStringLiteral("save"),
        QStringLiteral("Write what is in the files to OUT as a scene, in binary (.zep) or in text "
                       "(.zept), or as a drawing (.dxf); needs no display."),
        QStringLiteral("OUT")};
    QCommandLineOption Plain{
        QStringLiteral("plain"),
        QStringLiteral("Read programs by the bare rules of RS-274D, without what machines do "
                       "beyond them (pauses, work offsets, canned cycles, long arcs), and drawings "
                       "without newer kinds of entities and blocks.")};

    [[nodiscard]] QList<QCommandLineOption> All() const {
        return {Help,    Version, Info,        Json,     Picture, Size,  View, Camera, Layout,
                Shadows, Ground,  Transparent, NoGuides, Scale,   Print, Page, Save,   Plain};
    }
};

/// ".nc .ngc ..."
QString Suffixes() {
    QStringList patterns;
    for (const TFileFormat format : KnownFormats()) patterns << PatternsOf(format);
    return patterns.join(QLatin1Char(' ')).remove(QLatin1Char('*'));
}

void Describe(QCommandLineParser& parser, const TOptions& options) {
    parser.setApplicationDescription(
        QStringLiteral("Shows tool paths, drawings and models in an interactive 3D view."));
    parser.addOptions(options.All());
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("Files to open (%1).").arg(Suffixes()),
                                 QStringLiteral("[FILE...]"));
}

QSize ParseSize(const QString& text) {
    const QStringList sides = text.toLower().split(QLatin1Char('x'));
    const auto side = [&](qsizetype i) {
        bool isNumber = false;
        const int value = sides.at(i).toInt(&isNumber);
        return isNumber && value >= 1 && value <= TPictureWish::LargestSide ? value : 0;
    };
    const QSize size = sides.size() == 2 ? QSize(side(0), side(1)) : QSize(0, 0);
    if (size.isEmpty())
        throw Exception(
            QStringLiteral("--size takes WIDTHxHEIGHT, each from 1 to %1, but found \"%2\".")
                .arg(TPictureWish::LargestSide)
                .arg(text));
    return size;
}

TDirection ParseDirection(const QString& text) {
    static const std::array<std::pair<QString, TDirection>, 7> Names{
        {{QStringLiteral("iso"), TDirection::Iso},
         {QStringLiteral("top"), TDirection::Top},
         {QStringLiteral("front"), TDirection::Front},
         {QStringLiteral("right"), TDirection::Right},
         {QStringLiteral("left"), TDirection::Left},
         {QStringLiteral("back"), TDirection::Back},
         {QStringLiteral("bottom"), TDirection::Bottom}}};
    for (const auto& [name, direction] : Names)
        if (name == text) return direction;
    throw Exception(
        QStringLiteral(
            "--view takes iso, top, front, right, left, back or bottom, but found \"%1\".")
            .arg(text));
}

double ParseWidths(const QString& text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (isNumber && value >= TPictureWish::LeastScale && value <= TPictureWish::MostScale)
        return value;
    throw Exception(QStringLiteral("--scale takes a number from %1 to %2 with --picture, but found "
                                   "\"%3\".")
                        .arg(TPictureWish::LeastScale)
                        .arg(TPictureWish::MostScale)
                        .arg(text));
}

/// The options that only go with another one.
void CheckCompany(const QCommandLineParser& parser, const TOptions& options) {
    const auto isSet = [&](const QCommandLineOption& option) { return parser.isSet(option); };
    const auto name = [](const QCommandLineOption& option) { return option.names().constLast(); };
    const auto needs = [&](const QCommandLineOption& option, const QCommandLineOption& other) {
        if (isSet(option) && !isSet(other))
            throw Exception(
                QStringLiteral("--%1 only goes with --%2.").arg(name(option), name(other)));
    };
    needs(options.Json, options.Info);
    needs(options.Size, options.Picture);
    needs(options.Transparent, options.Picture);
    needs(options.Page, options.Print);
    for (const QCommandLineOption& option : {options.View, options.Camera, options.Shadows,
                                             options.Ground, options.NoGuides, options.Scale})
        if (isSet(option) && !isSet(options.Picture) && !isSet(options.Print))
            throw Exception(
                QStringLiteral("--%1 only goes with --picture or --print.").arg(name(option)));
    const auto excludes = [&](const QCommandLineOption& option, const QCommandLineOption& other) {
        if (isSet(option) && isSet(other))
            throw Exception(
                QStringLiteral("--%1 and --%2 do not go together.").arg(name(option), name(other)));
    };
    excludes(options.Info, options.Picture);
    excludes(options.Info, options.Print);
    excludes(options.Info, options.Save);
    excludes(options.Picture, options.Print);
    excludes(options.Picture, options.Save);
    excludes(options.Print, options.Save);
    excludes(options.View, options.Camera);
    excludes(options.Layout, options.Camera);
    excludes(options.Layout, options.Info);
    excludes(options.Layout, options.Save);
}

TCommandLine::TTask TaskOf(const QCommandLineParser& parser, const TOptions& options) {
    using enum TCommandLine::TTask;
    if (parser.isSet(options.Help)) return Help;
    if (parser.isSet(options.Version)) return Version;
    if (parser.isSet(options.Info)) return Info;
    if (parser.isSet(options.Save)) return Save;
    if (parser.isSet(options.Print)) return Print;
    return parser.isSet(options.Picture) ? Picture : Window;
}

/// Whatever is written, what is read stays.
void CheckOutput(const TCommandLine& line, const char* option, const QString& output) {
    for (const QString& file : line.Files)
        if (IsSameFile(file, output))
            throw Exception(QStringLiteral("It is to be read, and --%1 would write over it: choose "
                                           "another name.")
                                .arg(QLatin1StringView(option)),
                            {.File = file});
}

void CheckPicture(const TCommandLine& line) {
    if (line.PictureFile.isEmpty())
        throw Exception(QStringLiteral("--picture takes the name of the picture to write."));
    if (!IsPictureName(line.PictureFile))
        throw Exception(QStringLiteral("--picture takes a name that ends as a picture does, such "
                                       "as .png or .jpg, but found \"%1\".")
                            .arg(line.PictureFile));
    if (line.Picture.Transparent && !KeepsTransparency(line.PictureFile))
        throw Exception(QStringLiteral("--transparent goes with a PNG, WebP or TIFF, but found "
                                       "\"%1\".")
                            .arg(line.PictureFile));
    CheckOutput(line, "picture", line.PictureFile);
}

void CheckPaper(const TCommandLine& line) {
    if (!line.PaperFile.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
        throw Exception(QStringLiteral("--print takes a name that ends in .pdf, but found \"%1\".")
                            .arg(line.PaperFile));
    CheckOutput(line, "print", line.PaperFile);
}

QString NameOf(TCommandLine::TTask task) {
    using enum TCommandLine::TTask;
    if (task == Info) return QStringLiteral("info");
    return task == Print ? QStringLiteral("print") : QStringLiteral("picture");
}

void CheckFiles(const TCommandLine& line) {
    using enum TCommandLine::TTask;
    if (line.Task == Save && line.Files.isEmpty())
        throw Exception(QStringLiteral("--save takes one or more files, but found none."));
    if (line.Task == Save && !IsSceneName(line.SavedFile) && !IsDrawingName(line.SavedFile))
        throw Exception(QStringLiteral("--save takes a name that ends in .zep, .zept or .dxf, but "
                                       "found \"%1\".")
                            .arg(line.SavedFile));
    if ((line.Task == Info || line.Task == Picture || line.Task == Print) && line.Files.size() != 1)
        throw Exception(QStringLiteral("--%1 takes exactly one file, but found %2.")
                            .arg(NameOf(line.Task))
                            .arg(line.Files.size()));
    if (line.Task == Picture) CheckPicture(line);
    if (line.Task == Print) CheckPaper(line);
    if (line.Task == Save) CheckOutput(line, "save", line.SavedFile);
}

void ParsePicture(const QCommandLineParser& parser, const TOptions& options, TCommandLine& line) {
    line.PictureFile = parser.value(options.Picture);
    if (parser.isSet(options.Size)) line.Picture.Size = ParseSize(parser.value(options.Size));
    if (parser.isSet(options.Scale)) line.Picture.Scale = ParseWidths(parser.value(options.Scale));
    line.Picture.Transparent = parser.isSet(options.Transparent);
    line.Picture.Guides = !parser.isSet(options.NoGuides);
}

void ParsePaper(const QCommandLineParser& parser, const TOptions& options, TCommandLine& line) {
    line.PaperFile = parser.value(options.Print);
    if (parser.isSet(options.Page)) line.Paper.Page = PageNamed(parser.value(options.Page));
    if (parser.isSet(options.Scale)) line.Paper.Scale = ScaleNamed(parser.value(options.Scale));
    line.Paper.Guides = !parser.isSet(options.NoGuides);
}

} // namespace

TCommandLine ParseCommandLine(const QStringList& arguments) {
    using enum TCommandLine::TTask;
    const TOptions options;
    QCommandLineParser parser;
    Describe(parser, options);
    if (!parser.parse(arguments)) throw Exception(parser.errorText());

    TCommandLine line;
    line.Task = TaskOf(parser, options);
    line.Files = parser.positionalArguments();
    if (line.Task == Help || line.Task == Version) return line;
    CheckCompany(parser, options);
    line.Json = parser.isSet(options.Json);
    line.Plain = parser.isSet(options.Plain);
    if (line.Task == Picture) ParsePicture(parser, options, line);
    if (line.Task == Print) ParsePaper(parser, options, line);
    if (parser.isSet(options.View)) line.Direction = ParseDirection(parser.value(options.View));
    line.Camera = parser.value(options.Camera);
    line.Layout = parser.value(options.Layout);
    line.Shadows = parser.isSet(options.Shadows);
    line.Ground = parser.isSet(options.Ground);
    line.SavedFile = parser.value(options.Save);
    CheckFiles(line);
    return line;
}

QString HelpText() {
    QCommandLineParser parser;
    Describe(parser, TOptions());
    return parser.helpText();
}

} // namespace ZEP
