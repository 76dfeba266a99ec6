#include "viewer/window/StockDialog.h"

#include "viewer/window/StockTools.h"
#include "viewer/window/StockView.h"
#include <zep/framework/UserError.h>
#include <zep/stock/Guess.h>

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr double Furthest = 100'000; // mm

constexpr double BytesOfCell = 5, Megabyte = 1e6;
constexpr int ListHeight = 90;                // pixels
constexpr std::size_t MostRapidCuts = 10'000; // in the list

QDoubleSpinBox* LengthBox(double min, double value) {
    auto* box = new QDoubleSpinBox;
    box->setDecimals(3);
    box->setRange(min, Furthest);
    box->setSuffix(QStringLiteral(" mm"));
    box->setValue(value);
    return box;
}

QString Count(double count) {
    return QLocale().toString(count, 'f', 0);
}

QString Megabytes(double cells) {
    return QLocale().toString(cells * BytesOfCell / Megabyte, 'f', 1);
}

} // namespace

TStockDialog::TStockDialog(QWidget* parent, TStockView* view)
    : QDialog(parent), m_view(view), m_tools(new TStockTools) {
    setWindowTitle(QStringLiteral("Cut stock"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    layout->addLayout(form);
    AddSizes(*form);
    layout->addWidget(m_tools);
    AddRapidCuts(*layout);
    AddButtons(*layout);
    connect(m_view, &TStockView::PathChanged, this, &TStockDialog::TakeProgram);
    connect(m_view, &TStockView::Progressed, this, &TStockDialog::ShowState);
    connect(m_view, &TStockView::ShownChanged, this, &TStockDialog::ShowState);
    TakeProgram();
}

void TStockDialog::AddSizes(QFormLayout& form) {
    const auto addRow = [&](const QString& label, std::array<QDoubleSpinBox*, 3>& boxes) {
        auto* row = new QHBoxLayout;
        for (QDoubleSpinBox*& box : boxes) {
            row->addWidget(box = LengthBox(-Furthest, 0));
            connect(box, &QDoubleSpinBox::valueChanged, this, &TStockDialog::ShowCells);
        }
        form.addRow(label, row);
    };
    addRow(QStringLiteral("From x, y, z"), m_min);
    addRow(QStringLiteral("To x, y, z"), m_max);
    m_cell = LengthBox(0.001, 0.5);
    m_cells = new QLabel;
    auto* row = new QHBoxLayout;
    row->addWidget(m_cell);
    row->addWidget(m_cells, 1);
    form.addRow(QStringLiteral("Cells of"), row);
    connect(m_cell, &QDoubleSpinBox::valueChanged, this, &TStockDialog::ShowCells);
}

void TStockDialog::AddRapidCuts(QLayout& layout) {
    m_state = new QLabel;
    layout.addWidget(m_state);
    m_rapidCuts = new QTreeWidget;
    m_rapidCuts->setHeaderLabels({QStringLiteral("Line"), QStringLiteral("Deep, in rapid")});
    m_rapidCuts->setRootIsDecorated(false);
    m_rapidCuts->setUniformRowHeights(true);
    m_rapidCuts->setMinimumHeight(ListHeight);
    m_rapidCuts->setToolTip(QStringLiteral("Double click goes to the move"));
    connect(m_rapidCuts, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
        Q_EMIT MoveWanted(item->data(0, Qt::UserRole).toInt());
    });
    layout.addWidget(m_rapidCuts);
}

void TStockDialog::AddButtons(QLayout& layout) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    m_cut = buttons->addButton(QStringLiteral("C&ut"), QDialogButtonBox::ActionRole);
    m_remove = buttons->addButton(QStringLiteral("&Remove"), QDialogButtonBox::ActionRole);
    for (QAbstractButton* button : buttons->buttons())
        qobject_cast<QPushButton*>(button)->setAutoDefault(false);
    m_cut->setDefault(true);
    connect(m_cut, &QPushButton::clicked, this, &TStockDialog::Cut);
    connect(m_remove, &QPushButton::clicked, this, &TStockDialog::Remove);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout.addWidget(buttons);
}

void TStockDialog::TakeProgram() {
    const TToolPath* path = m_view->Path().get();
    m_cut->setEnabled(path != nullptr);
    if (!path) return ShowState();
    const bool isSame = m_view->Program() == m_program;
    m_program = m_view->Program();
    m_tools->SetPath(path, isSame);
    if (!isSame || Block() == m_guessed) GuessBlock(*path);
    ShowCells();
    ShowState();
    m_isCut = m_isCut && isSame && TryCut().isEmpty();
}

void TStockDialog::GuessBlock(const TToolPath& path) {
    if (const auto block = ZEP::GuessBlock(path, m_tools->Tools())) SetBlock(*block);
    m_guessed = Block();
}

void TStockDialog::SetBlock(const TStockBlock& block) {
    for (std::size_t k = 0; k < 3; ++k) {
        m_min[k]->setValue(block.Min[k]);
        m_max[k]->setValue(block.Max[k]);
    }
    m_cell->setValue(block.Cell);
}

TStockBlock TStockDialog::Block() const {
    TStockBlock block;
    for (std::size_t k = 0; k < 3; ++k) {
        block.Min[k] = m_min[k]->value();
        block.Max[k] = m_max[k]->value();
    }
    block.Cell = m_cell->value();
    return block;
}

QString TStockDialog::TryCut() {
    try {
        m_view->Cut(Block(), m_tools->Tools());
    } catch (const std::exception& error) {
        return ErrorReport(error);
    }
    return {};
}

void TStockDialog::Cut() {
    const QString error = TryCut();
    if (!error.isEmpty())
        return static_cast<void>(QMessageBox::critical(this, QStringLiteral("Cannot cut"), error));
    m_isCut = true;
}

void TStockDialog::Remove() {
    m_isCut = false;
    m_view->Remove();
}

void TStockDialog::ShowState() {
    const bool isCutting = m_view->IsShown() && !m_view->IsWhole();
    m_remove->setEnabled(m_view->IsShown());
    if (isCutting)
        return m_state->setText(
            QStringLiteral("Cutting: %1 %").arg(qRound(m_view->Progress() * 100)));
    const std::vector<TRapidCut> cuts = m_view->RapidCuts();
    m_state->setText(!m_view->IsShown() ? QStringLiteral("Not cut yet.")
                     : cuts.empty()     ? QStringLiteral("Nothing is cut in rapid.")
                                    : QStringLiteral("Moves that cut in rapid, red in the view: %1")
                                          .arg(Count(static_cast<double>(cuts.size()))));
    ListRapidCuts(cuts);
}

void TStockDialog::ListRapidCuts(const std::vector<TRapidCut>& cuts) {
    m_rapidCuts->clear();
    QList<QTreeWidgetItem*> items;
    for (std::size_t i = 0; i < std::min(cuts.size(), MostRapidCuts); ++i) {
        auto* item = new QTreeWidgetItem;
        item->setData(0, Qt::DisplayRole, cuts[i].Line);
        item->setData(0, Qt::UserRole, cuts[i].Move);
        item->setText(1, QStringLiteral("%1 mm").arg(QLocale().toString(cuts[i].Depth, 'f', 3)));
        items << item;
    }
    m_rapidCuts->addTopLevelItems(items);
}

void TStockDialog::ShowCells() {
    const TStockBlock block = Block();
    const auto count = [&](std::size_t k) {
        return std::fmax(0, std::ceil((block.Max[k] - block.Min[k]) / block.Cell - 1e-9));
    };
    m_cells->setText(QStringLiteral("%1 by %2, in %3 of %4 MB at most")
                         .arg(Count(count(0)), Count(count(1)), Megabytes(count(0) * count(1)),
                              Megabytes(TStock::MaxCells)));
}

} // namespace ZEP
