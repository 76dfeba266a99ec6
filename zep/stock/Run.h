#pragma once

#include <zep/Export.h>
#include <zep/converters/rs274d/ToolPath.h>
#include <zep/stock/Stock.h>
#include <zep/stock/Tool.h>

#include <chrono>
#include <vector>

namespace ZEP {

/// A move of the program that met material in rapid.
struct TRapidCut {
    int Move;     ///< of the path
    qint64 Line;  ///< of the program
    double Depth; ///< millimetres, at the deepest
};

/// Cuts a block as a path goes, and takes it to any move, also back. On the way states are kept, as
/// far apart as cutting from one to the next takes some 50 ms; what they take stays below
/// `MaxBytes`: where it would not, every other one is dropped.
///
/// A tool in rapid is taken for `RapidSlack` smaller on all its sides: it may go back through its
/// own cut, however the program's coordinates are rounded. Between places that only the machine
/// knows (`TRS274DPlaced`) it cuts nothing in rapid.
///
/// Arcs in planes other than XY are cut along chords that are `ArcTolerance` from them at most.
class ZEP_CORE_EXPORT TStockRun {
public:
    static constexpr qint64 MaxBytes = 128LL << 20;
    static constexpr double RapidSlack = 0.01;    ///< millimetres
    static constexpr double ArcTolerance = 0.001; ///< millimetres

    /// \param stock, path  outlive it; nothing else cuts the stock, which is made raw
    /// \param tools        as many as the path has; raises `Exception` for one that cannot cut
    TStockRun(TStock& stock, const TToolPath& path, std::vector<TStockTool> tools);

    /// Of the path.
    [[nodiscard]] int Count() const { return m_path.Count(); }
    /// So many moves are cut as a whole, and of the next one that part.
    [[nodiscard]] int Done() const { return m_done; }
    [[nodiscard]] double DonePart() const { return m_part; }
    /// Cuts, or takes back, to where so many moves are done. Values out of range count as the
    /// nearest.
    /// \param part   of the next move, 0 to 1
    /// \param limit  ends early when so much time has passed; the rest is done by the next calls
    /// \return whether it is there
    bool GoTo(int moves, double part = 0,
              std::chrono::milliseconds limit = std::chrono::hours(1000));

    /// Of the moves that were cut until now, going back or not; in the order of the path.
    [[nodiscard]] const std::vector<TRapidCut>& RapidCuts() const { return m_rapidCuts; }
    /// Of the states that are kept.
    [[nodiscard]] qint64 Bytes() const;

private:
    /// What was after so many moves.
    struct TKept {
        int Moves;
        TStock::TState State;
        qint64 Bytes; ///< beside the state before
    };

    [[nodiscard]] const TKept& KeptBefore(int moves) const;
    void Restore(const TKept& kept);
    void CutNext();
    void CutPart(double part);
    void NoteRapid(double depth);
    /// \return how deep it cut
    double CutMove(int index, double part);
    double CutWay(const TStockTool& tool, int index, double part);
    double CutArc(const TStockTool& tool, const TRS274DArc& arc, double start, double sweep);
    double CutRapid(const TStockTool& tool, int index, double part);
    void Keep();
    void Thin();

    TStock& m_stock;
    const TToolPath& m_path;
    std::vector<TStockTool> m_tools;
    std::vector<TKept> m_kept; ///< by moves; the first is the raw block
    std::vector<TRapidCut> m_rapidCuts;
    qint64 m_apart;        ///< work between states that are kept
    qint64 m_workKept = 0; ///< when the last one was kept, or passed
    int m_done = 0;
    int m_furthest = 0; ///< moves whose rapids were looked at
    double m_part = 0;
};

} // namespace ZEP
