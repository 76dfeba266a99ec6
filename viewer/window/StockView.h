#pragma once

#include <zep/stock/Run.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace ZEP {

class TZEPScene;
class TZEPWorkpiece;

/// The block that a program cuts, beside its path in the view. It is cut as a whole first, which
/// tells its cuts in rapid, then follows the moves. Long cuts go on while the window is in use.
class TStockView : public QObject {
    Q_OBJECT
public:
    TStockView(QObject* parent, TZEPScene* scene);
    ~TStockView() override;

    /// The path of the program that is shown; null: none. Another one takes the block away.
    /// \param program  its file
    void SetPath(std::shared_ptr<const TToolPath> path, const QString& program);
    /// The file of the path, or of the one before.
    [[nodiscard]] const QString& Program() const { return m_program; }
    [[nodiscard]] const std::shared_ptr<const TToolPath>& Path() const { return m_path; }
    /// Shows a block and cuts it. Raises `Exception` for one that cannot be, or for such tools;
    /// what was shown then stays.
    void Cut(const TStockBlock& block, const std::vector<TStockTool>& tools);
    void Remove();
    [[nodiscard]] bool IsShown() const { return m_run != nullptr; }

    /// Shows what is left when this move, or a part of it, is done.
    /// \param move  of the path; -1: all of them
    void Show(int move, double part = 1);
    /// The whole path was cut once, so that all cuts in rapid are known.
    [[nodiscard]] bool IsWhole() const { return m_isWhole; }
    [[nodiscard]] std::vector<TRapidCut> RapidCuts() const;
    /// Of the first cut, how much is done, 0 to 1.
    [[nodiscard]] double Progress() const;

Q_SIGNALS:
    /// Another path, or none.
    void PathChanged();
    /// The block came or went.
    void ShownChanged();
    /// The first cut has come further, or has ended.
    void Progressed();

private:
    void CutOn();
    void Refresh(bool atOnce);

    QPointer<TZEPScene> m_scene;
    std::shared_ptr<const TToolPath> m_path;
    QString m_program;
    std::shared_ptr<TStock> m_stock;
    std::unique_ptr<TStockRun> m_run;
    QPointer<TZEPWorkpiece> m_workpiece;
    QTimer m_timer;
    QElapsedTimer m_sinceSeen;
    qint64 m_seeing = 0; ///< ms that the last picture took
    bool m_isSeen = false;
    int m_move = -1;
    double m_part = 1;
    bool m_isWhole = false;
};

} // namespace ZEP
