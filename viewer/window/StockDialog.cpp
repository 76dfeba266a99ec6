#include "viewer/window/StockDialog.h"

#include "viewer/window/StockView.h"
#include <zep/framework/Exception.h>
#include <zep/stock/Guess.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeWidget>

#include <cmath>

namespace ZEP {

namespace {

enum TToolColumn {
    NameColumn,
    ShapeColumn,
    DiameterColumn,
    CornerColumn,
    AngleColumn,
    ColumnCount
};

constexpr double Furthest = 100'000; // mm

QDoubleSpinBox* LengthBox(double min, double max, double value, const QString& unit) {
    auto* box = new QDoubleSpinBox;
    box->setDecimals(3);
    box->setRange(min, max);
    box->setSuffix(unit);
    box->setValue(value);
    return box;
}

QDoubleSpinBox* LengthBox(double min, double value) {
    return LengthBox(min, Furthest, value, QStringLiteral(" mm"));
}

QComboBox* ShapeBox(TStockShape shape) {
    auto* box = new QComboBox;
    box->addItems({QStringLiteral("Flat"), QStringLiteral("Ball"), QStringLiteral("Bull nose"),
                   QStringLiteral("V")});
    box->setCurrentIndex(static_cast<int>(shape));
    return box;
}

QString NameOf(const TPathTool& tool, bool knowsDiameter) {
    QString name = tool.Number >= 0 ? QStringLiteral("T%1").arg(tool.Number) : QStringLiteral("-");
    if (!tool.Name.isEmpty()) name += QLatin1Char(' ') + tool.Name;
    return knowsDiameter ? name : name + QStringLiteral(" (no diameter stated: 3 mm)");
}

} // namespace

TStockDialog::TStockDialog(QWidget* parent, TStockView* view) : QDialog(parent), m_view(view) {
    setWindowTitle(QStringLiteral("Cut stock"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    layout->addLayout(form);
    AddSizes(*form);
    AddTools(*layout);
    AddRapidCuts(*layout);
    AddButtons(*layout);
    connect(m_view, &TStockView::Progressed, this, &TStockDialog::ShowState);
    connect(m_view, &TStockView::ShownChanged, this, &TStockDialog::ShowState);
    Guess();
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

void TStockDialog::AddTools(QLayout& layout) {
    m_tools = new QTableWidget(0, ColumnCount);
    m_tools->setHorizontalHeaderLabels({QStringLiteral("Tool"), QStringLiteral("Shape"),
                                        QStringLiteral("Diameter"), QStringLiteral("Corner radius"),
                                        QStringLiteral("Angle")});
    m_tools->horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    m_tools->verticalHeader()->hide();
    m_tools->setMinimumWidth(640);
    layout.addWidget(m_tools);
}

void TStockDialog::AddRapidCuts(QLayout& layout) {
    m_state = new QLabel;
    layout.addWidget(m_state);
    m_rapidCuts = new QTreeWidget;
    m_rapidCuts->setHeaderLabels({QStringLiteral("Line"), QStringLiteral("Deep, in rapid")});
    m_rapidCuts->setRootIsDecorated(false);
    connect(m_rapidCuts, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item) Q_EMIT LineWanted(item->data(0, Qt::DisplayRole).toInt());
    });
    layout.addWidget(m_rapidCuts);
}

void TStockDialog::AddButtons(QLayout& layout) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    m_cut = buttons->addButton(QStringLiteral("C&ut"), QDialogButtonBox::ActionRole);
    m_remove = buttons->addButton(QStringLiteral("&Remove"), QDialogButtonBox::ActionRole);
    m_cut->setDefault(true);
    connect(m_cut, &QPushButton::clicked, this, &TStockDialog::Cut);
    connect(m_remove, &QPushButton::clicked, m_view, &TStockView::Remove);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout.addWidget(buttons);
}

void TStockDialog::Guess() {
    SetTools();
    m_cut->setEnabled(m_view->Path() != nullptr);
    if (const auto block = m_view->Path() ? GuessBlock(*m_view->Path(), Tools()) : std::nullopt) {
        for (std::size_t k = 0; k < 3; ++k) {
            m_min[k]->setValue(block->Min[k]);
            m_max[k]->setValue(block->Max[k]);
        }
        m_cell->setValue(block->Cell);
    }
    ShowState();
}

void TStockDialog::SetTools() {
    m_tools->setRowCount(0);
    if (!m_view->Path()) return;
    for (const TPathTool& tool : m_view->Path()->Tools()) {
        const int row = m_tools->rowCount();
        m_tools->insertRow(row);
        const auto [guess, knowsDiameter] = GuessTool(tool);
        auto* name = new QTableWidgetItem(NameOf(tool, knowsDiameter));
        name->setFlags(Qt::ItemIsEnabled);
        m_tools->setItem(row, NameColumn, name);
        m_tools->setCellWidget(row, ShapeColumn, ShapeBox(guess.Shape));
        m_tools->setCellWidget(row, DiameterColumn,
                               LengthBox(TStockTool::MinDiameter, guess.Diameter));
        m_tools->setCellWidget(row, CornerColumn, LengthBox(0, guess.CornerRadius));
        m_tools->setCellWidget(row, AngleColumn,
                               LengthBox(1, 179, guess.Angle, QStringLiteral("\u00b0")));
    }
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

std::vector<TStockTool> TStockDialog::Tools() const {
    std::vector<TStockTool> tools;
    for (int row = 0; row < m_tools->rowCount(); ++row) {
        const auto value = [&](int column) {
            return qobject_cast<QDoubleSpinBox*>(m_tools->cellWidget(row, column))->value();
        };
        const auto* shape = qobject_cast<QComboBox*>(m_tools->cellWidget(row, ShapeColumn));
        tools.push_back({.Shape = static_cast<TStockShape>(shape->currentIndex()),
                         .Diameter = value(DiameterColumn),
                         .CornerRadius = value(CornerColumn),
                         .Angle = value(AngleColumn)});
    }
    return tools;
}

void TStockDialog::Cut() {
    try {
        m_view->Cut(Block(), Tools());
    } catch (const Exception& error) {
        QMessageBox::warning(this, windowTitle(), error.Message());
    }
}

void TStockDialog::ShowState() {
    m_remove->setEnabled(m_view->IsShown());
    const std::vector<TRapidCut> cuts = m_view->RapidCuts();
    QString state = QStringLiteral("Not cut yet.");
    if (m_view->IsShown() && !m_view->IsWhole())
        state = QStringLiteral("Cutting: %1 %").arg(qRound(m_view->Progress() * 100));
    else if (m_view->IsShown())
        state = cuts.empty() ? QStringLiteral("Nothing is cut in rapid.")
                             : QStringLiteral("Moves that cut in rapid: %1")
                                   .arg(QLocale().toString(static_cast<qint64>(cuts.size())));
    m_state->setText(state);
    if (m_view->IsShown() && !m_view->IsWhole()) return;
    m_rapidCuts->clear();
    for (const TRapidCut& cut : cuts) {
        auto* item = new QTreeWidgetItem(m_rapidCuts);
        item->setData(0, Qt::DisplayRole, cut.Line);
        item->setText(1, QStringLiteral("%1 mm").arg(QLocale().toString(cut.Depth, 'f', 3)));
    }
}

void TStockDialog::ShowCells() {
    const TStockBlock block = Block();
    const auto count = [&](std::size_t k) {
        return QLocale().toString(std::ceil((block.Max[k] - block.Min[k]) / block.Cell - 1e-9), 'f',
                                  0);
    };
    m_cells->setText(QStringLiteral("%1 by %2, of %3 at most")
                         .arg(count(0), count(1), QLocale().toString(TStock::MaxCells)));
}

} // namespace ZEP
