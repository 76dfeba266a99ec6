#pragma once

#include <zep/converters/rs274d/Arc.h>
#include <zep/converters/rs274d/Machine.h>

namespace ZEP {

/// The plain reading of a program: a picture of the path by simple rules, the same for every
/// program since the first release. M0 ends it; an inch counts 2.54; arcs are put over their
/// chords; drilling leaves a point; codes are rounded to whole numbers.
class TRS274DPlainMachine final : public TRS274DMachine {
public:
    using TRS274DMachine::TRS274DMachine;

protected:
    void RunBlock(const TRS274DBlock& block) override;

private:
    void ProcessWord(const TRS274DWord& word);
    void ProcessG(const TRS274DWord& word, qint64 code);
    void ProcessM(qint64 code);
    void GetCoordFromBlock(const TRS274DBlock& block);
    [[nodiscard]] double GetCoord(std::size_t axis, double value) const;
    void ProcessCommand();
    void ProcessArc();
    void ProcessFullCircle(TRS274DPlanePoint start);

    bool m_multiquadrant = false;
    TRS274DPoint m_target{};
    std::array<double, 4> m_centerWords{}; // I, J, K, R
    bool m_hasRadius = false;
};

} // namespace ZEP
