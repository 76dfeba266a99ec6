#include "viewer/window/StockTools.h"

#include "viewer/content/ProgramText.h"
#include <zep/converters/rs274d/ToolPathStatistics.h>
#include <zep/stock/Guess.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHeaderView>

#include <algorithm>

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

constexpr std::size_t MostTools = 200; // four boxes each: of more the rest is cut as guessed
constexpr int MostRowsSeen = 6, LeastRowsSeen = 2;
constexpr int WidestToolName = 260; // pixels

QDoubleSpinBox* NumberBox(double min, double max, double value, const QString& unit) {
    auto* box = new QDoubleSpinBox;
    box->setDecimals(3);
    box->setRange(min, max);
    box->setSuffix(unit);
    box->setValue(value);
    return box;
}

QComboBox* ShapeBox(TStockShape shape) {
    auto* box = new QComboBox;
    box->addItems({QStringLiteral("Flat"), QStringLiteral("Ball"), QStringLiteral("Bull nose"),
                   QStringLiteral("V")});
    box->setCurrentIndex(static_cast<int>(shape));
    return box;
}

} // namespace

TStockTools::TStockTools(QWidget* parent) : QTableWidget(0, ColumnCount, parent) {
    setHorizontalHeaderLabels({QStringLiteral("Tool"), QStringLiteral("Shape"),
                               QStringLiteral("Diameter"), QStringLiteral("Corner radius"),
                               QStringLiteral("Angle")});
    horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    verticalHeader()->hide();
    setSelectionMode(NoSelection);
    setTabKeyNavigation(false); // from box to box
    setSizeAdjustPolicy(AdjustToContents);
}

void TStockTools::KeepChanged() {
    const std::vector<TStockTool> tools = Tools();
    for (const std::size_t tool : m_rows)
        if (tools[tool] != m_guessed[tool]) m_changed[m_numbers[tool]] = tools[tool];
}

void TStockTools::SetPath(const TToolPath* path, bool keeps) {
    if (keeps)
        KeepChanged();
    else
        m_changed.clear();
    setRowCount(0);
    m_rows.clear();
    m_guessed.clear();
    m_numbers.clear();
    if (!path) return;
    const std::vector<TPathSums> sums = StatisticsOf(*path).ByTool;
    for (std::size_t i = 0; i < path->Tools().size(); ++i) {
        const auto [guess, knowsDiameter] = GuessTool(path->Tools()[i]);
        m_guessed.push_back(guess);
        m_numbers.push_back(path->Tools()[i].Number);
        if (sums[i].Moves > 0 && m_rows.size() < MostTools)
            AddRow(i, NameOf(path->Tools()[i]) +
                          (knowsDiameter ? QString() : QStringLiteral(" (diameter not stated)")));
    }
    updateGeometry();
}

void TStockTools::AddRow(std::size_t tool, const QString& name) {
    const int row = rowCount();
    const auto changed = m_changed.find(m_numbers[tool]);
    const TStockTool& shown = changed != m_changed.end() ? changed->second : m_guessed[tool];
    const QString unit = QStringLiteral(" mm");
    insertRow(row);
    m_rows.push_back(tool);
    auto* item = new QTableWidgetItem(name);
    item->setFlags(Qt::ItemIsEnabled);
    item->setToolTip(name);
    setItem(row, NameColumn, item);
    auto* shape = ShapeBox(shown.Shape);
    auto* corner = NumberBox(0.001, TStockTool::MaxDiameter / 2, shown.CornerRadius, unit);
    auto* angle = NumberBox(1, 179, shown.Angle, QStringLiteral("\u00b0"));
    setCellWidget(row, ShapeColumn, shape);
    setCellWidget(
        row, DiameterColumn,
        NumberBox(TStockTool::MinDiameter, TStockTool::MaxDiameter, shown.Diameter, unit));
    setCellWidget(row, CornerColumn, corner);
    setCellWidget(row, AngleColumn, angle);
    const auto enable = [corner, angle](int chosen) {
        corner->setEnabled(static_cast<TStockShape>(chosen) == TStockShape::Bull);
        angle->setEnabled(static_cast<TStockShape>(chosen) == TStockShape::V);
    };
    connect(shape, &QComboBox::currentIndexChanged, corner, enable);
    enable(shape->currentIndex());
}

std::vector<TStockTool> TStockTools::Tools() const {
    std::vector<TStockTool> tools = m_guessed;
    for (int row = 0; row < rowCount(); ++row) {
        const auto value = [&](int column) {
            return qobject_cast<QDoubleSpinBox*>(cellWidget(row, column))->value();
        };
        const auto* shape = qobject_cast<QComboBox*>(cellWidget(row, ShapeColumn));
        tools[m_rows[static_cast<std::size_t>(row)]] = {
            .Shape = static_cast<TStockShape>(shape->currentIndex()),
            .Diameter = value(DiameterColumn),
            .CornerRadius = value(CornerColumn),
            .Angle = value(AngleColumn)};
    }
    return tools;
}

QSize TStockTools::minimumSizeHint() const {
    const int rows = std::clamp(rowCount(), LeastRowsSeen, MostRowsSeen);
    return {0, horizontalHeader()->sizeHint().height() +
                   rows * verticalHeader()->defaultSectionSize() + 2 * frameWidth()};
}

QSize TStockTools::sizeHint() const {
    int width = WidestToolName;
    for (int column = ShapeColumn; column < ColumnCount; ++column)
        width += std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
    return {width, minimumSizeHint().height()};
}

} // namespace ZEP
