#pragma once

#include <zep/stock/Stock.h>

#include <QDialog>

#include <array>
#include <vector>

class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace ZEP {

class TStockTools;
class TStockView;
class TToolPath;
struct TRapidCut;

/// Asks for the block that a program cuts and for its tools, as they are guessed at first, and
/// lists the cuts in rapid. It stays open beside the view.
class TStockDialog : public QDialog {
    Q_OBJECT
public:
    TStockDialog(QWidget* parent, TStockView* view);

Q_SIGNALS:
    /// The user picked a cut in rapid.
    void MoveWanted(int move);

private:
    void AddSizes(QFormLayout& form);
    void AddRapidCuts(QLayout& layout);
    void AddButtons(QLayout& layout);
    [[nodiscard]] TStockBlock Block() const;
    /// Another program is shown, or the same one anew: what the user has chosen for it stays, and
    /// what was cut is cut again.
    void TakeProgram();
    /// What is as it was guessed is guessed anew.
    void GuessBlock(const TToolPath& path);
    void SetBlock(const TStockBlock& block);
    /// What was wrong; nothing where it is cut.
    QString TryCut();
    void Cut();
    void Remove();
    void ShowState();
    void ListRapidCuts(const std::vector<TRapidCut>& cuts);
    void ShowCells();

    TStockView* m_view;
    std::array<QDoubleSpinBox*, 3> m_min{}, m_max{};
    QDoubleSpinBox* m_cell = nullptr;
    QLabel* m_cells = nullptr;
    TStockTools* m_tools;
    QLabel* m_state = nullptr;
    QTreeWidget* m_rapidCuts = nullptr;
    QPushButton* m_cut = nullptr;
    QPushButton* m_remove = nullptr;
    QString m_program;
    TStockBlock m_guessed{}; ///< as the boxes show it
    bool m_isCut = false;    ///< as far as the user has asked
};

} // namespace ZEP
