#pragma once

#include "viewer/content/Objects.h"
#include "viewer/files/CameraPlace.h"
#include "viewer/files/OpenedFile.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/batch/Shown.h>
#include <zep/view/Backdrop.h>
#include <zep/view/Camera.h>
#include <zep/view/Directions.h>

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace ZEP {

class TLoading;
class TZEPLayout;
class TZEPScene;

/// What the viewer shows: a scene, the camera that looks at it, and the files in it. A line's
/// colour appears as it was given: all the light is ambient. Behind the files there are a
/// background, a grid and the axes. The materials of all files are in the library of the scene.
class TDocument : public QObject {
    Q_OBJECT
public:
    TDocument();
    ~TDocument() override;

    [[nodiscard]] TZEPScene* Scene() const { return m_scene.get(); }
    [[nodiscard]] TZEPCamera* Camera() const { return m_camera; }
    [[nodiscard]] const std::vector<TOpenedFile>& Files() const { return m_files; }

    /// Replaces what is shown by those of the files that can be read; `Failures` tells of the
    /// others. Raises `Exception` where none can; what was shown then stays.
    /// \return false when `progress` cancelled it; what was shown then stays, too
    bool Open(const QStringList& files, bool plain, const TOpenProgress& progress = {});
    /// Adds to what is shown. Files that are shown already are read again in their place: what the
    /// user hid or showed, by ident, stays so. Raises and answers as `Open`.
    bool Add(const QStringList& files, bool plain, const TOpenProgress& progress = {});
    /// How files are shown at first that are opened from now on, but for background and widths: it
    /// is made ready while they are read. Nothing is, for programs without a window.
    void SetFirstShown(const TZEPShown& shown) { m_firstShown = shown; }
    /// Files of the last `Open` or `Add` that could not be read.
    [[nodiscard]] const std::vector<TFailure>& Failures() const { return m_failures; }
    /// Writes what is shown as a scene or, where the name ends so, as a drawing; see `SaveScene`
    /// and `SaveDrawing`. Where the name is that of a file that is shown, that file counts as
    /// unchanged. Raises `Exception`. \return  what could not be written
    std::vector<TPassedOver> Save(const QString& fileName);
    /// Nothing for a name that is not shown.
    void Close(const QString& file);
    /// Null where it is not shown.
    [[nodiscard]] const TOpenedFile* Find(const QString& file) const;
    /// What lengths of the object are told in.
    [[nodiscard]] QString UnitOf(const TZEPObject& object) const;
    /// Of everything that draws, or of the sheet that is shown; none in an empty document.
    [[nodiscard]] std::optional<TZEPBounds> Bounds() const;
    /// The sheet that is shown in place of the model; null for the model.
    [[nodiscard]] TZEPLayout* Layout() const;
    /// Shows a sheet of one of the files, or the model: null. Each is seen as it was left; at first
    /// it is looked at as by `LookBest`.
    void ShowLayout(TZEPLayout* layout, double aspect);
    [[nodiscard]] const TZEPBackdrop& Backdrop() const { return m_backdrop; }
    [[nodiscard]] TZEPBackdrop& Backdrop() { return m_backdrop; }
    /// Shows or hides grid and axes; sheets have none.
    void SetGuides(bool shown);
    [[nodiscard]] bool Guides() const { return m_guides; }
    /// One colour in place of the background of its own, which about a sheet is grey.
    [[nodiscard]] const std::optional<TColor>& Background() const { return m_background; }
    void SetBackground(const std::optional<TColor>& color);
    /// A file is so large that it can be drawn in part, for speed: see `SetShare`.
    [[nodiscard]] bool IsLarge() const;
    /// How much of the large files the next frames show, above 0; 1 is all. No repaint.
    void SetShare(double share);

    /// There is something to see, all of it in a plane of one z: a drawing.
    [[nodiscard]] bool IsFlat() const;
    /// From where it shows best at first: what is flat from the `Top`.
    [[nodiscard]] TDirection BestDirection() const;
    /// Looks from there, at what is flat in a parallel view.
    void LookBest(double aspect);
    /// Looks from a direction at everything, in a view of that width to height.
    void LookFrom(TDirection direction, double aspect);
    /// The whole from where the camera looks now.
    void FitAll(double aspect);
    /// The same for some of the objects, with all that is below them.
    void FitObjects(const std::vector<TZEPObject*>& objects, double aspect);

Q_SIGNALS:
    /// Objects of files are about to go away.
    void AboutToChange();
    /// Other files, or other objects of them, are shown now.
    void Changed();
    /// The camera looks from one of the standard sides now.
    void LookedFrom(ZEP::TDirection direction);
    /// Another sheet, or the model, is shown now.
    void LayoutShown();
    /// The view became parallel, or perspective.
    void ProjectionChanged(bool parallel);

private:
    bool Read(TLoading& loading, const QStringList& files, const TOpenProgress& progress);
    void ShowColors();
    void SetLayout(TZEPLayout* layout);
    void LookAgain(const TCameraPlace& place);
    void GiveColors(TZEPShown& shown) const;
    [[nodiscard]] std::optional<TZEPShown> FirstShown() const;
    template <class Change>
    void ChangeFiles(Change&& change);
    void Remove(std::size_t index);
    void Replace(std::size_t index, TLoading& loading);

    TZEPMaterialLibrary m_materials; ///< before the scene, which looks at it until it goes
    std::unique_ptr<TZEPScene> m_scene;
    TZEPCamera* m_camera = nullptr;
    std::vector<TOpenedFile> m_files;
    std::vector<TFailure> m_failures;
    std::optional<TZEPShown> m_firstShown;
    TZEPBackdrop m_backdrop;
    QPointer<TZEPLayout> m_layout;
    TZEPExtent m_sheet;                                           ///< its extent
    std::unordered_map<const TZEPLayout*, TCameraPlace> m_places; ///< of what is not shown
    std::optional<TColor> m_background;
    bool m_guides = true;
};

} // namespace ZEP
