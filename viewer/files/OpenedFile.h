#pragma once

#include "viewer/content/Extent.h"
#include "viewer/files/Format.h"
#include "viewer/files/PassedOver.h"

#include <QDateTime>
#include <QSet>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace ZEP {

class TFileRoot;
class TZEPMaterialLibrary;

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
    TFileState State;   ///< when reading began
    double Seconds = 0; ///< that reading took
    std::vector<TPassedOver> Messages;
    TFileRoot* Root = nullptr;
    qint64 Objects = 0;         ///< layers and groups left out
    TExtent Extent;             ///< absolute, of all that draws
    int Materials = 0;          ///< that the file holds
    QSet<QString> HiddenInFile; ///< idents of children of the root that the file switches off
    int FirstMaterial = 0;      ///< number in the scene's library
    int SharedMaterials = 0;    ///< that the scene's library holds for it
};

/// Called now and then with the file that is read, and how much of all is done, from 0 to 1; false
/// cancels.
using TOpenProgress = std::function<bool(const QString& file, double fraction)>;

} // namespace ZEP
