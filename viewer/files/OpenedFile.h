#pragma once

#include "viewer/files/Format.h"
#include "viewer/files/PassedOver.h"
#include <zep/view/Extent.h>

#include <QDateTime>
#include <QSet>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace ZEP {

class TStoredScene;
class TToolPath;
class TZEPBatch;

/// How a file lies on the disk: what tells that it has changed.
struct TFileState {
    qint64 Size = -1; ///< -1: there is none
    QDateTime Modified{};

    bool operator==(const TFileState&) const = default;
    [[nodiscard]] bool Exists() const { return Size >= 0; }
    [[nodiscard]] static TFileState Of(const QString& fileName);
};

/// One opened file: its objects are the children of `Root`.
struct TOpenedFile {
    QString Name;
    TFileFormat Format = TFileFormat::Unknown;
    QString Unit = QStringLiteral("units"); ///< of its lengths, where the file tells it
    TFileState State;                       ///< when reading began
    double Seconds = 0;                     ///< that reading took
    QString Dialect;                        ///< of a program, as guessed; else empty
    std::vector<TPassedOver> Messages;
    TZEPBatch* Root = nullptr;
    /// The root is part of what is stored. It is not where a scene's own objects stand below it, or
    /// an object that stands alone in its file.
    bool StoresRoot = true;
    /// The scene that the file describes, without its objects and materials; null where there is
    /// none, but an object alone.
    std::shared_ptr<TStoredScene> Scene{};
    std::shared_ptr<TToolPath> Path{}; ///< of a program; null for other files
    qint64 Objects = 0;                ///< layers and groups left out
    TZEPExtent Extent;                 ///< absolute, of all that draws
    int Materials = 0;                 ///< that the file holds
    QSet<QString> HiddenInFile; ///< idents of children of the root that the file switches off
    int FirstMaterial = 0;      ///< number in the scene's library
    int SharedMaterials = 0;    ///< that the scene's library holds for it
};

/// A file that could not be read, beside others that could.
struct TFailure {
    QString File;
    QString Error;   ///< "FILE, line 3: what is wrong"
    QString Reason;  ///< what is wrong
    qint64 Line = 0; ///< 0: none is known

    TFailure(const QString& file, const std::exception& error);
};

/// Each in a line; of many the first ones.
[[nodiscard]] QString ReportOf(const std::vector<TFailure>& failures);

/// Called now and then with the file that is read, and how much of all is done, from 0 to 1; false
/// cancels.
using TOpenProgress = std::function<bool(const QString& file, double fraction)>;

} // namespace ZEP
