#include "viewer/Run.h"

#include "viewer/CommandLine.h"
#include "viewer/Display.h"
#include "viewer/drawing/ViewLook.h"
#include "viewer/files/FileCameras.h"
#include "viewer/files/FileLayouts.h"
#include "viewer/files/Info.h"
#include "viewer/files/Picture.h"
#include "viewer/window/MainWindow.h"
#include <zep/Version.h>
#include <zep/framework/Message.h>
#include <zep/framework/UserError.h>

#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QTimer>

#include <cerrno>
#include <cstdio>
#include <optional>

namespace ZEP {

namespace {

enum ExitCode { Done = 0, Failed = 1, NotUnderstood = 2 };

void PrintError(const QString& text) {
    for (const QString& line : text.split(QLatin1Char('\n')))
        PrintText(stderr, QStringLiteral("zepview: ") + line + QLatin1Char('\n'));
}

/// What Qt warns of, which may name a file.
void PrintWarning(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    PrintText(stderr, qFormatLogMessage(type, context, text) + QLatin1Char('\n'));
}

QStringList Arguments(int argc, char** argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i) arguments << QFile::decodeName(argv[i]);
    return arguments;
}

int PrintHelp(int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    PrintText(stdout, HelpText());
    return Done;
}

int PrintVersion() {
    PrintText(stdout, QStringLiteral("zepview ") + LibraryVersion() + QLatin1Char('\n'));
    return Done;
}

/// What is written holds all of the files or is not written.
void OpenAll(TDocument& document, const TCommandLine& line) {
    document.Open(line.Files, line.Plain);
    if (!document.Failures().empty()) throw Exception(ReportOf(document.Failures()));
}

int PrintInfo(const TCommandLine& line) {
    TDocument document;
    OpenAll(document, line);
    const TFileInfo info = InfoOf(document.Files().front());
    PrintText(stdout,
              line.Json ? QString::fromUtf8(QJsonDocument(ToJson(info)).toJson()) : ToText(info));
    if (std::fflush(stdout) != 0)
        throw Exception(
            QStringLiteral("Standard output cannot be written: %1.").arg(qt_error_string(errno)));
    return Done;
}

/// \param size  of what is drawn, in any unit
TViewLook Look(const TCommandLine& line, TDocument& document, const QSizeF& size) {
    const double aspect = size.width() / size.height();
    if (!line.Layout.isEmpty())
        document.ShowLayout(LayoutNamed(line.Layout, document.Files()), aspect);
    if (line.Direction)
        document.LookFrom(*line.Direction, aspect);
    else
        document.LookBest(aspect);
    if (!line.Camera.isEmpty()) LookThrough(line.Camera, document);
    const auto shadows = line.Shadows ? TViewLook::TShadows::Subtracted : TViewLook::TShadows::Own;
    return {.Shadows = shadows, .Ground = line.Ground};
}

int Draw(const TCommandLine& line) {
    SetMessageHandler([](const QString& text, const QString&, TMessageIcon) { PrintError(text); });
    TDocument document;
    OpenAll(document, line);
    if (line.Task == TCommandLine::TTask::Print)
        WritePaper(document, Look(line, document, line.Paper.Page.sizePoints().transposed()),
                   line.Paper, line.PaperFile);
    else
        WritePicture(document, Look(line, document, line.Picture.Size), line.Picture,
                     line.PictureFile);
    return Done;
}

int ShowWindow(const TCommandLine& line) {
    TMainWindow window(line.Plain);
    window.show();
    // After the window is there, so that progress and errors have one to stand on.
    if (!line.Files.isEmpty())
        QTimer::singleShot(0, &window, [&] { window.OpenFiles(line.Files, line.Layout); });
    return QApplication::exec();
}

int RunWithDisplay(int& argc, char** argv, const TCommandLine& line) {
    std::optional<TDisplayConnection> connection;
    const auto reaches = [&] { return connection.emplace().IsOpen(); };
    const QString problem = DisplayProblem(TDisplayEnvironment::Current(), reaches);
    if (!problem.isEmpty()) throw Exception(problem);
    ChoosePlatform();
    const QApplication application(argc, argv);
    connection.reset();
    return line.Task == TCommandLine::TTask::Window ? ShowWindow(line) : Draw(line);
}

// Texts are placed and measured by their fonts, which are the same with a display and without one:
// of the platforms that need none, this one brings them, whatever the user has chosen for windows.
int RunWithoutDisplay(int& argc, char** argv, const TCommandLine& line) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (line.Task == TCommandLine::TTask::Info) return PrintInfo(line);
    TDocument document;
    OpenAll(document, line);
    const std::vector<TPassedOver> left = document.Save(line.SavedFile);
    for (const TPassedOver& kind : left)
        PrintError(QStringLiteral("%1: %2: %3 left out, which a drawing cannot hold.")
                       .arg(line.SavedFile, kind.Kind, QString::number(kind.Count)));
    return Done;
}

int RunTask(int& argc, char** argv, const TCommandLine& line) {
    switch (line.Task) {
    case TCommandLine::TTask::Help:
        return PrintHelp(argc, argv);
    case TCommandLine::TTask::Version:
        return PrintVersion();
    case TCommandLine::TTask::Info:
    case TCommandLine::TTask::Save:
        return RunWithoutDisplay(argc, argv, line);
    default:
        return RunWithDisplay(argc, argv, line);
    }
}

template <class Task>
int Guarded(Task&& task, ExitCode failure) {
    try {
        return task();
    } catch (const std::exception& error) {
        PrintError(ErrorReport(error));
    }
    return failure;
}

} // namespace

int RunViewer(int argc, char** argv) {
    qInstallMessageHandler(PrintWarning);
    QCoreApplication::setApplicationName(QStringLiteral("zepview"));
    QCoreApplication::setOrganizationName(QStringLiteral("zep"));
    QCoreApplication::setApplicationVersion(LibraryVersion());
    TCommandLine line;
    const auto parse = [&] {
        line = ParseCommandLine(Arguments(argc, argv));
        return Done;
    };
    if (const int code = Guarded(parse, NotUnderstood)) {
        PrintError(QStringLiteral("\"zepview --help\" lists what it understands."));
        return code;
    }
    return Guarded([&] { return RunTask(argc, argv, line); }, Failed);
}

} // namespace ZEP
