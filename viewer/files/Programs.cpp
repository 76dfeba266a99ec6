#include "viewer/files/Programs.h"

#include "viewer/content/Describe.h"
#include "viewer/files/OpenedFile.h"
#include <zep/batch/Batch.h>
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
        if (file.Format == TFileFormat::RS274D)
            programs.push_back({file.Root, file.Name, file.Path});
        if (file.Format == TFileFormat::Scene) AddProgramsOf(file, programs);
    }
    return programs;
}

} // namespace ZEP
