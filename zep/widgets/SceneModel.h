#pragma once

#include <zep/Export.h>

#include <QAbstractItemModel>

#include <functional>
#include <memory>
#include <vector>

namespace ZEP {

class TZEPObject;
class TZEPScene;

/// The objects of a scene as a tree for Qt's views: name and icon with a box that shows and hides,
/// colour, number of objects right below. It is in step with the scene: rows come, go, move and are
/// renamed with their objects, and a box that is checked changes what is seen. What has been
/// appended, and what is shown, hidden or coloured anew, appears when the event loop runs next, or
/// at `Sync`.
///
/// A row has no data of its own: a million of them cost nothing until they are looked at. Any
/// number of models may look at one scene. It outlives its scene, and is then empty. What slots of
/// its signals do to the scene it stands, also freeing what the signal is about. What they append
/// waits for the end of the change; where they change the tree otherwise, it begins anew
/// (`modelReset`).
///
/// `Ident` raises nothing, and a scene that is updated by hand (`ManualUpdate`) tells of its tree
/// alone: `Refresh` after such changes.
class ZEP_EXPORT TZEPSceneModel : public QAbstractItemModel {
    Q_OBJECT
public:
    enum TColumn { NameColumn, ColorColumn, CountColumn, ColumnCount };

    explicit TZEPSceneModel(QObject* parent = nullptr);
    ~TZEPSceneModel() override;

    /// The rows are what is below an object, of a scene all that is in it; null: none. Raises
    /// `Exception` where it stands in no scene. Out of its scene it has no rows, until it is back.
    void SetRoot(TZEPObject* root);
    /// The rows are these objects of one scene, in this order; one that stands below another is no
    /// row of its own. Raises `Exception` as `SetRoot`, and where there are several scenes.
    void SetRoots(const std::vector<TZEPObject*>& roots);
    /// Null before there is a root, and once the scene is gone.
    [[nodiscard]] TZEPScene* Scene() const;

    [[nodiscard]] static TZEPObject* ObjectAt(const QModelIndex& index);
    /// Syncs. Invalid for what is not in the tree, or not found.
    [[nodiscard]] QModelIndex IndexOf(const TZEPObject& object);
    /// The object is in the tree, found or not.
    [[nodiscard]] bool Reaches(const TZEPObject& object) const;
    /// Tells views at once of what has changed.
    void Sync();
    /// Everything is looked at anew, but for the tree itself.
    void Refresh();
    /// It tells views of a change of its own just now.
    [[nodiscard]] bool IsChanging() const;

    /// Leaves rows of objects that `finds` answers true for, with all that is below them and what
    /// leads there; empty: all. A change of the tree makes it search again.
    void SetFilter(std::function<bool(const TZEPObject&)> finds);
    [[nodiscard]] bool IsFiltered() const;
    /// How many objects were found; 0 without a filter.
    [[nodiscard]] long long Found() const;

    /// Shown, what was hidden of an object comes back as it was, and what was seen in part is seen
    /// whole; of what hides it, nothing else comes to be seen.
    void SetShown(const std::vector<TZEPObject*>& objects, bool shown);
    /// These are seen, whole, and nothing else of the tree.
    void ShowOnly(const std::vector<TZEPObject*>& objects);
    void ShowAll();

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Name: ident, else what a text says, else the name, else the kind. The box is checked in part
    /// where some of what is below is not seen.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    class TSync;

    [[nodiscard]] QModelIndex Find(const TZEPObject& object) const;
    [[nodiscard]] QVariant NameData(const TZEPObject& object, int role) const;

    std::unique_ptr<TSync> m_sync;
};

} // namespace ZEP
