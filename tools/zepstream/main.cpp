#include <zep/framework/Message.h>
#include <zep/framework/stream/StreamFile.h>

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

namespace ZEP {
namespace {

enum ExitCode { Done = 0, Failed = 1, NotUnderstood = 2 };

constexpr const char* Usage = "Usage: zepstream to-binary IN OUT   writes the binary form of IN\n"
                              "       zepstream to-text IN OUT     writes the text form of IN\n"
                              "       zepstream check FILE         says whether FILE is whole\n"
                              "IN and FILE are component streams in either form.\n";

void Convert(const QString& in, const QString& out, TStreamForm form) {
    TStreamFile file(in);
    SaveStreamFile(out, form, [&](TTokenSink& sink) {
        file.Read([&](TTokenSource& source) { CopyStream(source, sink); });
    });
}

void Check(const QString& name) {
    TStreamFile file(name);
    qint64 components = 0;
    qint64 properties = 0;
    file.Read([&](TTokenSource& source) {
        for (const TToken* token = &source.Next(); token->Kind != TTokenKind::End;
             token = &source.Next()) {
            if (token->Kind == TTokenKind::BeginComponent)
                ++components;
            else if (!token->Name.empty())
                ++properties;
        }
        source.ExpectEnd();
    });
    const bool isText = file.Form() == TStreamForm::Text;
    PrintText(stdout, QStringLiteral("%1: %2, %3 components, %4 properties\n")
                          .arg(name, isText ? QStringLiteral("text") : QStringLiteral("binary"),
                               QString::number(components), QString::number(properties)));
}

int Run(const QStringList& arguments) {
    const QString task = arguments.value(1);
    const bool toBinary = task == QLatin1StringView("to-binary");
    const bool toText = task == QLatin1StringView("to-text");
    if ((toBinary || toText) && arguments.size() == 4)
        Convert(arguments[2], arguments[3], toText ? TStreamForm::Text : TStreamForm::Binary);
    else if (task == QLatin1StringView("check") && arguments.size() == 3)
        Check(arguments[2]);
    else {
        const bool isHelp = task == QLatin1StringView("--help") || task == QLatin1StringView("-h");
        std::fputs(Usage, isHelp ? stdout : stderr);
        return isHelp ? Done : NotUnderstood;
    }
    return Done;
}

} // namespace
} // namespace ZEP

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    try {
        return ZEP::Run(QCoreApplication::arguments());
    } catch (const std::exception& error) {
        ZEP::PrintText(stderr,
                       QStringLiteral("zepstream: %1\n").arg(QString::fromUtf8(error.what())));
    }
    return ZEP::Failed;
}
