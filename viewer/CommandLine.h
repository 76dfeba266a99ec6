#pragma once

#include "viewer/files/Paper.h"
#include "viewer/files/Picture.h"
#include <zep/view/Directions.h>

#include <QString>
#include <QStringList>

#include <optional>

namespace ZEP {

/// What the user asked for.
///
/// Defaults: a window, 1280 by 960 pixels for a picture, seen from where it shows best.
struct TCommandLine {
    enum class TTask { Window, Info, Picture, Print, Save, Version, Help };

    TTask Task = TTask::Window;
    QStringList Files;
    bool Json = false;
    /// Programs and drawings are read by the bare rules of their formats, without what is beyond
    /// them.
    bool Plain = false;
    QString PictureFile;
    TPictureWish Picture;
    QString PaperFile; ///< to be printed; ends in ".pdf"
    TPaperWish Paper;
    QString SavedFile;                   ///< to be written; ends in ".zep", ".zept" or ".dxf"
    std::optional<TDirection> Direction; ///< none: from where it shows best
    QString Layout;                      ///< sheet of the file to be shown; empty: the model
    QString Camera;       ///< of the file, to look through; empty: from the direction
    bool Shadows = false; ///< in the picture
    bool Ground = false;  ///< likewise
};

/// Understands the arguments, the program's name first. Raises `Exception` for those that are
/// unknown, incomplete or do not go together.
[[nodiscard]] TCommandLine ParseCommandLine(const QStringList& arguments);

/// The text of `--help`; needs an application object.
[[nodiscard]] QString HelpText();

} // namespace ZEP
