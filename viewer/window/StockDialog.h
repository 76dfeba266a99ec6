#pragma once

#include <zep/stock/Stock.h>
#include <zep/stock/Tool.h>

#include <QDialog>

#include <array>
#include <vector>

class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QTableWidget;
class QTreeWidget;

namespace ZEP {

class TStockView;

/// Asks for the block that a program cuts and for its tools, as they are guessed at first, and
/// lists the cuts in rapid. It stays open beside the view.
class TStockDialog : public QDialog {
    Q_OBJECT
public:
    TStockDialog(QWidget* parent, TStockView* view);

    /// Another program is shown: guesses anew.
    void Guess();

Q_SIGNALS:
    /// The user picked a cut in rapid.
    void LineWanted(int line);

private:
    void AddSizes(QFormLayout& form);
    void AddTools(QLayout& layout);
    void AddRapidCuts(QLayout& layout);
    void AddButtons(QLayout& layout);
    [[nodiscard]] TStockBlock Block() const;
    [[nodiscard]] std::vector<TStockTool> Tools() const;
    void SetTools();
    void Cut();
    void ShowState();
    void ShowCells();

    TStockView* m_view;
    std::array<QDoubleSpinBox*, 3> m_min{}, m_max{};
    QDoubleSpinBox* m_cell = nullptr;
    QLabel* m_cells = nullptr;
    QTableWidget* m_tools = nullptr;
    QLabel* m_state = nullptr;
    QTreeWidget* m_rapidCuts = nullptr;
    QPushButton* m_cut = nullptr;
    QPushButton* m_remove = nullptr;
};

} // namespace ZEP
