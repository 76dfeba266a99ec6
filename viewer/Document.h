#pragma once

#include "viewer/Backdrop.h"
#include "viewer/Directions.h"
#include "viewer/Format.h"
#include "viewer/Reader.h"
#include "viewer/ViewCamera.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace ZEP {

class TFileRoot;
class TZEPScene;

/// One opened file: its objects are the children of `Root`.
struct TOpenedFile {
    QString Name;
    TFileFormat Format = TFileFormat::Unknown;
    double Seconds = 0; ///< that reading took
    std::vector<TPassedOver> Messages;
    TFileRoot* Root = nullptr;
    std::optional<TBox> Bounds; ///< absolute; none where nothing draws
};

/// Called now and then with the file that is read, and how much of all is done, from 0 to 1; false
/// cancels.
using TOpenProgress = std::function<bool(const QString& file, double fraction)>;

/// What the viewer shows: a scene, the camera that looks at it, and the files in it. A line's
/// colour appears as it was given: all the light is ambient. Behind the files there are a
/// background, a grid and the axes.
class TDocument {
public:
    TDocument();
    ~TDocument();
    Q_DISABLE_COPY_MOVE(TDocument)

    [[nodiscard]] TZEPScene* Scene() const { return m_scene.get(); }
    [[nodiscard]] TViewCamera* Camera() const { return m_camera; }
    [[nodiscard]] const std::vector<TOpenedFile>& Files() const { return m_files; }

    /// Replaces what is shown. Raises `Exception`; what was shown then stays.
    /// \return false when `progress` cancelled it; what was shown then stays, too
    bool Open(const QStringList& files, bool plain, const TOpenProgress& progress = {});
    /// Of everything that draws; none in an empty document.
    [[nodiscard]] std::optional<TBox> Bounds() const;
    [[nodiscard]] const TBackdrop& Backdrop() const { return m_backdrop; }
    /// Shows or hides grid and axes.
    void SetGuides(bool shown);
    /// One colour in place of the background of its own.
    void SetBackground(const std::optional<TColor>& color);
    /// A file is so large that it can be drawn in part, for speed: see `SetShare`.
    [[nodiscard]] bool IsLarge() const;
    /// How much of the large files the next frames show, above 0; 1 is all. No repaint.
    void SetShare(double share);

    /// There is something to see, all of it in a plane of one z: a drawing.
    [[nodiscard]] bool IsFlat() const;
    /// From where it shows best at first: a flat one from the `Top`, in a parallel view.
    [[nodiscard]] TDirection BestDirection() const;
    /// Looks from a direction at everything, in a view of that width to height.
    void LookFrom(TDirection direction, double aspect);
    /// The whole from where the camera looks now.
    void FitAll(double aspect);
    /// The same for some of the objects.
    void FitObjects(const std::vector<TZEPObject*>& objects, double aspect);

private:
    void ShowColors();

    std::unique_ptr<TZEPScene> m_scene;
    TViewCamera* m_camera = nullptr;
    std::vector<TOpenedFile> m_files;
    TBackdrop m_backdrop;
};

using TObjectVisitor = std::function<void(TZEPObject&)>;

/// Calls `visit` for each object below `root`, parents first.
void ForEachObject(TZEPObject& root, const TObjectVisitor& visit);

/// Of all objects below `root`; none where there are none.
[[nodiscard]] std::optional<TBox> BoundsOf(TZEPObject& root);

} // namespace ZEP
