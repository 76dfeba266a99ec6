#pragma once

#include <zep/converters/rs274d/Block.h>
#include <zep/converters/rs274d/Expression.h>
#include <zep/converters/rs274d/Parameters.h>

#include <vector>

namespace ZEP {

/// Reads on in a block where its plain words ended: words whose values are reckoned ("X[#1+2]") and
/// settings of parameters ("#1=5"). Settings take effect together, once all of the block is read.
class TRS274DStatement {
public:
    /// `parameters` outlives it.
    explicit TRS274DStatement(TRS274DParameters& parameters) : m_parameters(parameters) {}

    /// Completes the block with its words. On a fault nothing is set, and the block stays
    /// incomplete.
    TRS274DFault Read(TRS274DBlock& block);
    /// Words of the last block that have no value and that no path needs (F, S, H, D, T).
    [[nodiscard]] int DroppedWords() const { return m_droppedWords; }
    /// Settings of the last block that the machine does not take.
    [[nodiscard]] int RefusedSettings() const { return m_refusedSettings; }

private:
    struct TSetting {
        TRS274DReference Parameter;
        double Value;
    };

    TRS274DFault ReadSetting(std::string_view& rest);
    TRS274DFault ReadWord(TRS274DBlock& block, std::string_view& rest);

    TRS274DParameters& m_parameters;
    std::vector<TSetting> m_settings;
    int m_droppedWords = 0, m_refusedSettings = 0;
};

} // namespace ZEP
