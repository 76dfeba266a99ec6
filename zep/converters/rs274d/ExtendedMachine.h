#pragma once

#include <zep/converters/rs274d/Arc.h>
#include <zep/converters/rs274d/Codes.h>
#include <zep/converters/rs274d/Cycle.h>
#include <zep/converters/rs274d/Frames.h>
#include <zep/converters/rs274d/Machine.h>
#include <zep/converters/rs274d/Parameters.h>
#include <zep/converters/rs274d/ToolNames.h>

namespace ZEP {

/// Where a block asks to go on.
enum class TRS274DTransfer : std::uint8_t {
    None,
    CallProgram, ///< M98: the program P, L times
    CallLine,    ///< M97: from line number P on, L times
    Return       ///< M99
};

/// Reads a program as a milling machine would: true arcs and helices, coordinate systems and
/// offsets, reference points, drilling cycles with all their moves. Coordinates are the machine's,
/// in millimetres; all origins and reference points are 0 until the program sets them. Cycles
/// return to the R level until G98.
class TRS274DExtendedMachine final : public TRS274DMachine, public TRS274DMachineValues {
public:
    using TRS274DMachine::TRS274DMachine;

    /// What the block that ran last asks of the one who hands out blocks; told once.
    [[nodiscard]] TRS274DTransfer TakeTransfer() {
        return std::exchange(m_plan.Transfer, TRS274DTransfer::None);
    }

    [[nodiscard]] std::optional<double> MachineValue(int number) const override;
    [[nodiscard]] std::optional<double> MachineValue(std::string_view name) const override;
    bool SetMachineValue(int number, double value) override;

protected:
    void RunBlock(const TRS274DBlock& block) override;

private:
    /// What the codes of one block ask for beyond the modes that they set.
    struct TPlan {
        const TRS274DCode* Action = nullptr; ///< takes the axis words for itself
        bool Motion = false;                 ///< a motion code stands in the block
        bool OtherUse = false;               ///< axis words without one belong to something else
        bool MachineFrame = false;
        bool Dwells = false;
        TRS274DTransfer Transfer = TRS274DTransfer::None;
    };

    void ProcessG(const TRS274DWord& word);
    void ProcessM(const TRS274DWord& word, const TRS274DBlock& block);

    /// \name What the sink is told beyond the moves
    /// @{
    void NoteSettings(const TRS274DBlock& block);
    void SelectTool(double number);
    void SetFeedMode(TRS274DFeedMode mode);
    void TurnSpindle(qint64 code);
    void ChangeTool(const TRS274DBlock& block);
    void Dwell(double seconds);
    /// Cheap where there is nothing to tell: each move asks.
    void TellSettings(bool drills) {
        if (m_hasNewSettings || m_settings.Drills != drills) TellNewSettings(drills);
    }
    void TellNewSettings(bool drills);
    /// @}

    void ApplyMode(const TRS274DCode& code);
    void SetMotion(TRS274DMoveMode mode);
    void Execute(const TRS274DBlock& block);
    void Move(const TRS274DBlock& block, qint64 repeats);

    [[nodiscard]] double Units(double value) const;
    [[nodiscard]] double Programmed(double millimetres) const;
    [[nodiscard]] double MotionCode() const;
    [[nodiscard]] TRS274DPoint Target(const TRS274DBlock& block) const;
    void ApplyPolar(const TRS274DBlock& block, TRS274DPoint& target) const;

    void RunAction(const TRS274DBlock& block);
    void SetData(const TRS274DBlock& block);
    void GoToReference(std::size_t which, const TRS274DBlock& block);
    template <class Function>
    void ForAxisWords(const TRS274DBlock& block, Function function) const;

    void Arc(const TRS274DBlock& block);
    [[nodiscard]] std::optional<TRS274DPlanePoint>
    ArcCenter(const TRS274DBlock& block, TRS274DPlanePoint start, TRS274DPlanePoint end) const;
    [[nodiscard]] double CenterCoordinate(const TRS274DBlock& block, std::size_t axis) const;
    [[nodiscard]] bool IsCounterClockwiseInPlane() const;
    [[nodiscard]] int Turns(const TRS274DBlock& block);
    void DrawTurn(const TRS274DTurn& turn, const TRS274DPoint& target, int turns);

    void Drill(const TRS274DBlock& block, qint64 repeats);
    void ReadHole(const TRS274DBlock& block);
    void DrillAt(const TRS274DPoint& place);
    void MoveOnNormal(bool rapid, double level);

    TPlan m_plan;
    double m_feed = 0, m_speed = 0; // F and S as programmed
    TRS274DSettings m_settings, m_toldSettings;
    double m_selectedTool = 0, m_tool = 0;
    bool m_hasSelected = false; // a T was stated
    bool m_hasNewSettings = false;
    TRS274DToolNames m_toolNames;
    TRS274DFrames m_frames;
    std::array<TRS274DPoint, 2> m_references{}; // of G28 and G30
    bool m_absoluteCenters = false;

    TRS274DHole m_hole;
    double m_initialLevel = 0;
    bool m_newCycle = false;
    bool m_returnToInitial = false;
    TRS274DMoveMode m_modeBeforeCycle = mmNone;

    std::vector<TRS274DPoint> m_points;
    std::vector<TRS274DLevelMove> m_levelMoves;
};

} // namespace ZEP
