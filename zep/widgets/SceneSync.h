#pragma once

#include <zep/widgets/SceneRows.h>
#include <zep/widgets/SceneWatch.h>
#include <zep/widgets/Visibility.h>

#include <QAbstractItemModel>

#include <functional>
#include <unordered_set>

namespace ZEP {

/// Keeps the rows of a model in step with the scene, and tells its views.
///
/// Children that are appended are held back until the event loop runs, so that a million of them
/// come as one change. Anything else happens at once, since objects may be freed right after. What
/// is removed or moved while views are being told of another change cannot wait, and views cannot
/// be told of both: the rows are lost then, and filled in anew afterwards.
class TZEPSceneSync : private TZEPSceneListener {
public:
    explicit TZEPSceneSync(QAbstractItemModel& model) : m_model(model), m_watch(*this) {}

    /// Replaces roots or filter. \param change  of the rows
    void Reset(TZEPScene* scene, const std::function<void(TZEPSceneRows&)>& change);
    /// Tells what is to be told; nothing while views are being told already.
    void Sync();
    void Refresh();
    void SetShown(const std::vector<TZEPObject*>& objects, bool shown);
    /// Shows and hides.
    void ChangeVisibility(const std::function<void(TZEPVisibility&)>& change);

    [[nodiscard]] TZEPScene* Scene() const { return m_watch.Scene(); }
    [[nodiscard]] bool IsEmitting() const { return m_emitting > 0; }
    [[nodiscard]] const TZEPSceneRows& Rows() const { return m_rows; }
    /// Of the box of an object.
    [[nodiscard]] Qt::CheckState StateOf(const TZEPObject& object) const;
    /// Views have looked at a row below; null: of the top level.
    void NoteLook(const TZEPObject* parent);

protected:
    ~TZEPSceneSync() = default;

    /// \name What only the model itself can do
    /// @{
    [[nodiscard]] virtual QModelIndex Find(const TZEPObject& object) const = 0;
    virtual void BeginReset() = 0;
    virtual void EndReset() = 0;
    virtual void BeginInsert(const QModelIndex& parent, int first, int last) = 0;
    virtual void EndInsert() = 0;
    virtual void BeginRemove(const QModelIndex& parent, int row) = 0;
    virtual void EndRemove() = 0;
    /// \param before  the row that it is put before
    virtual void BeginMove(const QModelIndex& parent, int row, int before) = 0;
    virtual void EndMove() = 0;
    /// @}

private:
    using TObjects = std::unordered_set<const TZEPObject*>;
    static constexpr std::size_t MostTold = 100; ///< rows, or parents of rows, that are told singly

    void Inserted(TZEPObject& object) override;
    void Removing(TZEPObject& object) override;
    void Moving(TZEPObject& object, int to) override;
    void Renamed(TZEPObject& object) override { Mark(object); }
    void Changed(TObject* sender) override;
    void SceneGone() override;

    bool Emit(const std::function<void()>& emission);
    bool PresentHeldBack();
    void TellEach(const std::function<bool(const TZEPObject&)>& tell);
    void Tell();
    void TellAll();
    bool TellRows(const QModelIndex& parent);
    void Lose();
    void Recover();
    void Tick();
    bool IsLeaving();
    void Forget();
    void ForgetAll(TZEPObject& gone);
    void Mark(TZEPObject& object);
    void MarkAll();
    void Schedule();
    [[nodiscard]] bool CanTell();
    [[nodiscard]] QModelIndex Place(const TZEPObject& parent) const;

    QAbstractItemModel& m_model;
    TZEPSceneWatch m_watch;
    TZEPSceneRows m_rows;
    TZEPVisibility m_visibility;
    TObjects m_looked;                     ///< parents of rows that views have looked at
    TObjects m_marked;                     ///< rows that are to be drawn anew
    TObjects m_telling;                    ///< what is yet to be told of these
    std::vector<TZEPChildPlace> m_leaving; ///< what is about to go while there are no rows
    const TZEPObject* m_lastLooked = nullptr;
    std::size_t m_removed = 0; ///< rows, since the event loop ran last
    int m_emitting = 0;
    bool m_allMarked = false;
    bool m_resetDue = false;
    bool m_scheduled = false;
};

} // namespace ZEP
