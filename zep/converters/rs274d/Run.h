#pragma once

#include <zep/converters/Progress.h>
#include <zep/converters/rs274d/DialectGuess.h>
#include <zep/converters/rs274d/ExtendedMachine.h>
#include <zep/converters/rs274d/Flow.h>
#include <zep/converters/rs274d/Statement.h>

namespace ZEP {

/// One run of a program on a machine: takes block after block, reckons what is to be reckoned, and
/// decides where it goes on.
class TRS274DRun {
public:
    TRS274DRun(std::string_view text, const TRS274DOptions& options, TRS274DSink& sink,
               TRS274DReport& report);
    /// \return whether it was not cancelled
    bool Go(const TProgress& progress);

private:
    using TPassed = TRS274DPassed;
    using TControlBlock = TRS274DControlBlock;
    using TControlWord = TRS274DControlWord;

    bool TellProgress(const TProgress& progress);
    void RunLine(std::string_view line);
    void RunText(std::string_view text, const char* line);
    void RunWords();
    void RunStatement();
    /// Counts a block of so many characters.
    void Spend(std::size_t characters);
    /// The program asks for more than it may.
    [[noreturn]] void RefuseMore();
    void TellFault(TRS274DFault fault);
    void TellNotes();

    /// \name Calls
    /// @{
    void Transfer(TRS274DTransfer transfer);
    void CallProgram(double number, double count);
    void CallLine(double number, double count);
    void CallSub(const TControlBlock& block);
    void Enter(const TRS274DSubprogram& subprogram, double count, bool isSub);
    void Leave();
    void ReturnFromProgram();
    void ReturnFromSub(const TControlBlock& block);
    void TellNoSubprogram(const QString& name);
    /// @}

    /// \name Control words
    /// @{
    /// \return whether the block has one
    bool RunControl(const char* line);
    void RunWord(int index, const TControlBlock& block);
    void RunLoopWord(int index, const TControlBlock& block);
    void BeginRepeat(int index, const TControlBlock& block);
    [[nodiscard]] bool HasCounterpart(const TControlWord& word);
    [[nodiscard]] const TControlWord& WordAt(int index);
    void GoTo(int index) { m_flow.GoTo(WordAt(index).At); }
    void GoBehind(int index) { m_flow.GoBehind(WordAt(index).At); }
    /// The value in brackets that a control word has; 0, and told, where there is none.
    double ValueOf(const TControlBlock& block);
    /// Values in brackets, to the end of the text; told where there is anything else.
    bool ReadValues(std::string_view text);
    /// @}

    /// \name Custom macros B
    /// @{
    /// \return whether the block is one of theirs
    bool RunMacro(const char* line);
    void RunLoop(const TRS274DMacroBlock& block, const char* line);
    void RunBranch(const TRS274DMacroBlock& block, const char* line);
    void GoToLine(double number);
    /// G65, G66 and G67.
    /// \return whether the block is one of these
    bool RunMacroCall();
    void ReadArguments();
    void CallMacro(double number, double count);
    /// After a move of a block, while G66 is in force.
    void CallModalMacro();
    [[nodiscard]] double ConditionOf(const TRS274DMacroBlock& block);
    /// @}

    /// \name Arc centres that the program does not tell of
    /// @{
    TRS274DCenters Judge(TRS274DCenters told);
    /// What all the arcs of the program tell: absolute where one does and none tells otherwise.
    [[nodiscard]] TRS274DCenters CentersOfAll();
    /// @}

    struct TModalMacro {
        double Number = 0, Count = 0; ///< 0 times: none
        std::size_t Depth = 0;        ///< of the calls where it was given
        std::vector<double> Arguments{};
    };

    const std::string_view m_text;
    const bool m_isFanuc;
    const TRS274DOptions m_options;
    TRS274DReport& m_report;
    TRS274DExtendedMachine m_machine;
    TRS274DParameters m_parameters;
    TRS274DStatement m_statement;
    TRS274DSubprograms m_subprograms;
    TRS274DFlow m_flow;
    TRS274DBlock m_block;
    std::vector<double> m_values;
    TModalMacro m_modalMacro;
    std::string m_statementText; ///< behind THEN
    int m_branches = 0;          ///< IF within IF, in one line
    TProgress m_progress;
    bool m_isCancelled = false;
    const qint64 m_size;
    const qint64 m_maxMotions;
    qint64 m_blocksLeft;
    std::size_t m_nextStep = ProgressStep;
    const char* m_loopEndLine = nullptr; ///< of the loop that has gone on last
    int m_loopEnd = TControlWord::None;
    bool m_isUndecided = false; ///< the branch that comes next has to be looked at
};

} // namespace ZEP
