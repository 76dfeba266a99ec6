#include "viewer/files/Programs.h"

#include "viewer/content/Describe.h"
#include "viewer/files/OpenedFile.h"
#include <zep/batch/Batch.h>
#include <zep/converters/rs274d/DialectGuess.h>
#include <zep/converters/rs274d/Interpreter.h>
#include <zep/converters/rs274d/ToolPath.h>
#include <zep/framework/Exception.h>
#include <zep/framework/FileText.h>

#include <QDir>
#include <QFileInfo>

namespace ZEP {

namespace {

bool HoldsMoves(const TZEPObject& root) {
    return root.GetItemsCount() > 0 && ProgramLineOf(*root.GetItem(0));
}

QString TextBeside(const TOpenedFile& scene, const QString& name) {
    const QString folder = QFileInfo(scene.Name).path();
    const QFileInfo text(QDir(folder), name);
    const bool isBeside = IsFileIn(folder, text.filePath());
    return isBeside && text.lastModified() <= scene.State.Modified ? text.filePath() : QString();
}

/// Null where the moves are others: read plainly, or by another text.
std::shared_ptr<TToolPath> PathOf(const QString& text, const TZEPObject& root) {
    auto path = std::make_shared<TToolPath>();
    TRS274DReport report;
    try {
        const TFileText file(text);
        const TRS274DOptions options{.FileName = text, .Dialect = GuessRS274DDialect(file.Text())};
        TRS274DInterpreter(options, *path, report).Run(file.Text());
    } catch (const Exception&) { // the moves before an error may be all that there are
    }
    return path->ObjectCount() == root.GetItemsCount() ? path : nullptr;
}

TProgram ProgramBeside(const TOpenedFile& scene, TZEPObject& root) {
    const QString text = TextBeside(scene, root.Ident());
    return {&root, text, text.isEmpty() ? nullptr : PathOf(text, root)};
}

void AddProgramsOf(const TOpenedFile& scene, std::vector<TProgram>& programs) {
    const auto add = [&](TZEPObject& root) {
        if (qobject_cast<TZEPBatch*>(&root) && HoldsMoves(root))
            programs.push_back(ProgramBeside(scene, root));
    };
    add(*scene.Root);
    for (int i = 0, count = scene.Root->GetItemsCount(); i < count; ++i)
        add(*scene.Root->GetItem(i));
}

} // namespace

std::vector<TProgram> ProgramsOf(std::span<const TOpenedFile> files) {
    std::vector<TProgram> programs;
    for (const TOpenedFile& file : files) {
        if (file.Format == TFileFormat::RS274D)
            programs.push_back({file.Root, file.Name, file.Path});
        if (file.Format == TFileFormat::Scene) AddProgramsOf(file, programs);
    }
    return programs;
}

} // namespace ZEP
