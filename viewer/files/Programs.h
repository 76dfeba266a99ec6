#pragma once

#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace ZEP {

class TToolPath;
class TZEPObject;
struct TOpenedFile;

/// A program whose moves are shown.
struct TProgram {
    TZEPObject* Root;                  ///< of its moves
    QString Text;                      ///< the file that it stands in; empty where there is none
    std::shared_ptr<TToolPath> Path{}; ///< null: not known
};

/// Those of files, and those that were saved in scenes. The text of one in a scene is the program
/// beside it whose name is the ident of the moves' root, unless it is newer than the scene. Its
/// path is read from there, where its moves are as many as the objects.
[[nodiscard]] std::vector<TProgram> ProgramsOf(std::span<const TOpenedFile> files);

} // namespace ZEP
