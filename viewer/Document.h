#pragma once

#include "view/Camera.h"
#include "viewer/Directions.h"
#include "viewer/Format.h"
#include "viewer/Reader.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace ZEP {

class TZEPScene;

/// An axis-aligned box in absolute coordinates.
struct TBox {
    TGLArrayd3 Min, Max;
};

/// One opened file: its objects are the children of `Root`.
struct TOpenedFile {
    QString Name;
    TFileFormat Format = TFileFormat::Unknown;
    double Seconds = 0; ///< that reading took
    std::vector<TPassedOver> Messages;
    TZEPObject* Root = nullptr;
};

/// What the viewer shows: a scene, the camera that looks at it, and the files in it. A line's
/// colour appears as it was given: all the light is ambient.
class TDocument {
public:
    TDocument();
    ~TDocument();
    Q_DISABLE_COPY_MOVE(TDocument)

    [[nodiscard]] TZEPScene* Scene() const { return m_scene.get(); }
    [[nodiscard]] TZEPCamera* Camera() const { return m_camera; }
    [[nodiscard]] const std::vector<TOpenedFile>& Files() const { return m_files; }

    /// Replaces what is shown. Raises `Exception`; what was shown then stays.
    /// \return false when `progress` cancelled it; what was shown then stays, too
    bool Open(const QStringList& files, bool plain, const TLoadProgress& progress = {});
    /// Of everything that draws; none in an empty document.
    [[nodiscard]] std::optional<TBox> Bounds() const;

    /// Looks from a direction at everything, in a view of that width to height.
    void LookFrom(TDirection direction, double aspect);
    /// The whole from where the camera looks now.
    void FitAll(double aspect);

private:
    std::unique_ptr<TZEPScene> m_scene;
    TZEPCamera* m_camera = nullptr;
    std::vector<TOpenedFile> m_files;
};

using TObjectVisitor = std::function<void(TZEPObject&)>;

/// Calls `visit` for each object below `root`, parents first.
void ForEachObject(TZEPObject& root, const TObjectVisitor& visit);

/// Of all objects below `root`; none where there are none.
[[nodiscard]] std::optional<TBox> BoundsOf(TZEPObject& root);

} // namespace ZEP
