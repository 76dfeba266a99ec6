#include "viewer/files/Programs.h"

#include "viewer/content/Describe.h"
#include "viewer/files/OpenedFile.h"
#include <zep/batch/Batch.h>

#include <QDir>
#include <QFileInfo>

namespace ZEP {

namespace {

bool HoldsMoves(const TZEPObject& root) {
    return root.GetItemsCount() > 0 && ProgramLineOf(*root.GetItem(0));
}

// The name comes out of a file, and must not lead out of its folder.
QString TextBeside(const TOpenedFile& scene, const QString& name) {
    const QDir folder = QFileInfo(scene.Name).dir();
    const QFileInfo text(folder, name);
    const bool isBeside =
        text.isFile() && QFileInfo(text.canonicalFilePath()).path() == folder.canonicalPath();
    return isBeside && text.lastModified() <= scene.State.Modified ? text.filePath() : QString();
}

void AddProgramsOf(const TOpenedFile& scene, std::vector<TProgram>& programs) {
    const auto add = [&](TZEPObject& root) {
        if (qobject_cast<TZEPBatch*>(&root) && HoldsMoves(root))
            programs.push_back({&root, TextBeside(scene, root.Ident())});
    };
    add(*scene.Root);
    for (int i = 0, count = scene.Root->GetItemsCount(); i < count; ++i)
        add(*scene.Root->GetItem(i));
}

} // namespace

std::vector<TProgram> ProgramsOf(std::span<const TOpenedFile> files) {
    std::vector<TProgram> programs;
    for (const TOpenedFile& file : files) {
        if (file.Format == TFileFormat::RS274D) programs.push_back({file.Root, file.Name});
        if (file.Format == TFileFormat::Scene) AddProgramsOf(file, programs);
    }
    return programs;
}

} // namespace ZEP
