#pragma once

#include <zep/converters/rs274d/Arc.h>
#include <zep/converters/rs274d/Centers.h>
#include <zep/converters/rs274d/Codes.h>
#include <zep/converters/rs274d/Cycle.h>
#include <zep/converters/rs274d/Frames.h>
#include <zep/converters/rs274d/Machine.h>
#include <zep/converters/rs274d/Parameters.h>
#include <zep/converters/rs274d/Rotation.h>
#include <zep/converters/rs274d/ToolNames.h>

#include <functional>

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
/// return to the R level until G98; in Fanuc's dialect, to the initial level until G99.
class TRS274DExtendedMachine final : public TRS274DMachine, public TRS274DMachineValues {
public:
    using TRS274DMachine::TRS274DMachine;

    /// Asked at arcs whose centres may count from two places, as long as neither the program nor an
    /// answer tells: what such an arc itself tells goes in, what is to hold from here on comes out.
    using TCenterJudge = std::function<TRS274DCenters(TRS274DCenters)>;
    void SetCenterJudge(TCenterJudge judge) { m_judge = std::move(judge); }
    /// A lathe runs the program: some codes are others there, and F is a turn's.
    void SetTurns(bool turns);

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

    [[nodiscard]] std::optional<double> NumberedValue(int number) const;
    [[nodiscard]] std::optional<double> FanucValue(int number) const;
    bool RunsSignal(int number);

    [[nodiscard]] bool IsFanuc() const { return m_options.Dialect == TRS274DDialect::Fanuc; }
    [[nodiscard]] static constexpr char LetterOf(char first, std::size_t axis) {
        return static_cast<char>(first + static_cast<int>(axis));
    }

    void ProcessG(const TRS274DWord& word, const TRS274DBlock& block);
    void ProcessM(const TRS274DWord& word, const TRS274DBlock& block);

    /// \name What the sink is told beyond the moves
    /// @{
    void NoteSettings(const TRS274DBlock& block);
    void SelectTool(double number);
    void SetFeedMode(TRS274DFeedMode mode);
    void SetRetract(bool toInitial);
    void TurnSpindle(qint64 code);
    void ChangeTool(const TRS274DBlock& block);
    [[nodiscard]] double DwellOf(const TRS274DBlock& block) const;
    void Dwell(double seconds);
    /// Cheap where there is nothing to tell: each move asks.
    void TellSettings(bool drills) {
        if (m_hasNewSettings || m_settings.Drills != drills) TellNewSettings(drills);
    }
    void TellNewSettings(bool drills);
    /// Before the moves of a block that has words of axes.
    void NotePlaces(const TRS274DBlock& block) {
        if (m_settings.Placed != TRS274DPlaced::Whole || m_plan.MachineFrame) FindPlaces(block);
    }
    void FindPlaces(const TRS274DBlock& block);
    void SetPlaced(std::size_t axis, bool placed);
    void TellPlaces(bool wasPlaced);
    void SetThreading(bool threads);
    void SetPitch(double pitch);
    /// @}

    void ApplyMode(const TRS274DCode& code);
    void ApplyOther(const TRS274DCode& code);
    void SetMotion(TRS274DMoveMode mode);
    void Execute(const TRS274DBlock& block);
    void Move(const TRS274DBlock& block);

    [[nodiscard]] double Units(double value) const;
    [[nodiscard]] double Programmed(double millimetres) const;
    [[nodiscard]] double MotionCode() const;
    /// \name Where a block goes
    /// @{
    [[nodiscard]] TRS274DPoint Target(const TRS274DBlock& block);
    void ApplyPolar(const TRS274DBlock& block, TRS274DPoint& target) const;
    /// With polar words or a rotation in force.
    [[nodiscard]] TRS274DPoint PlacedTarget(const TRS274DBlock& block);
    void ApplyPolarMode(const TRS274DBlock& block, const TRS274DPoint& present,
                        TRS274DPoint& target);
    [[nodiscard]] double PolarAngleOf(const TRS274DPoint& point) const;
    void SetPolar(bool on);
    void SetPlane(TRS274DArcPlane plane);
    void Rotate(const TRS274DBlock& block);
    /// @}

    void RunAction(const TRS274DBlock& block);
    void Tap(const TRS274DBlock& block);
    void SetData(const TRS274DBlock& block);
    void GoToReference(std::size_t which, const TRS274DBlock& block);
    template <class Function>
    void ForAxisWords(const TRS274DBlock& block, Function function) const {
        for (std::size_t axis = 0; axis < m_position.size(); ++axis) {
            const char letter = LetterOf('X', axis);
            if (block.Has(letter)) function(axis, Units(block.Value(letter)));
        }
    }

    void Arc(const TRS274DBlock& block);
    [[nodiscard]] std::optional<TRS274DPlanePoint>
    ArcCenter(const TRS274DBlock& block, TRS274DPlanePoint start, TRS274DPlanePoint end);
    [[nodiscard]] TRS274DPlanePoint StatedCenter(const TRS274DBlock& block, bool isAbsolute) const;
    void FindCenters(TRS274DPlanePoint start, TRS274DPlanePoint end,
                     const TRS274DCenterChoice& center);
    [[nodiscard]] bool IsCounterClockwiseInPlane() const;
    [[nodiscard]] int Turns(const TRS274DBlock& block);
    void DrawTurn(const TRS274DTurn& turn, const TRS274DPoint& target, int turns);

    [[nodiscard]] const TRS274DCode& MeaningOf(const TRS274DCode& code,
                                               const TRS274DBlock& block) const;
    [[nodiscard]] bool IsTapping(const TRS274DBlock& block) const;
    [[nodiscard]] qint64 HoleCount(const TRS274DBlock& block);
    void Drill(const TRS274DBlock& block);
    void ReadHole(const TRS274DBlock& block);
    void BoreBack(const TRS274DPoint& place);
    void DrillAt(const TRS274DPoint& place);
    void MoveOnNormal(bool rapid, double level);

    TPlan m_plan;
    double m_feed = 0, m_speed = 0; // F and S as programmed
    TRS274DSettings m_settings{.Placed = TRS274DPlaced::Neither}, m_toldSettings;
    double m_selectedTool = 0, m_tool = 0;
    bool m_hasSelected = false; // a T was stated
    bool m_hasNewSettings = false;
    bool m_threads = false;
    bool m_isSurfaceSpeed = false;
    double m_pitch = 0; // of the thread, millimetres
    TRS274DToolNames m_toolNames;
    TRS274DFrames m_frames;
    std::array<TRS274DPoint, 2> m_references{}; // of G28 and G30
    std::array<bool, 2> m_knowsReference{};
    std::array<bool, 3> m_placedAxes{}; // that the program has told the place of
    bool m_isPlaced = false;            // all of them
    TRS274DCenters m_centers = TRS274DCenters::Unknown;
    bool m_centersFound = false; ///< absolute, which the program does not say
    TCenterJudge m_judge;
    TRS274DRotation m_rotation;
    bool m_isPolar = false;
    std::optional<TRS274DPoint> m_pole; ///< elsewhere than the origin

    TRS274DHole m_hole;
    std::optional<double> m_levelWord, m_depthWord; ///< R and depth of the cycle, as programmed
    double m_initialLevel = 0;
    bool m_newCycle = false;
    bool m_returnToInitial = IsFanuc();
    bool m_turns = false;
    TRS274DMoveMode m_modeBeforeCycle = mmNone;

    std::vector<TRS274DPoint> m_points;
    std::vector<TRS274DLevelMove> m_levelMoves;
};

} // namespace ZEP
