#include "viewer/window/ToolsList.h"

#include "viewer/content/Describe.h"
#include "viewer/content/ProgramText.h"
#include "viewer/drawing/Look.h"
#include <zep/converters/rs274d/ToolPathStatistics.h>

#include <QHeaderView>
#include <QLocale>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>

namespace ZEP {

namespace {

constexpr int WidestName = 170; // pixels: the comment of a post may be long
constexpr int MostRows = 12;    // before it scrolls

enum TListColumn : int {
    NameInList,
    TimeInList,
    CutInList,
    RapidInList,
    FeedInList,
    SpeedInList,
    MovesInList
};

/// Black at the rim, which shows on any ground.
QIcon Swatch(TColor color) {
    constexpr int side = 12;
    QPixmap pixmap(side, side);
    pixmap.fill(ToQColor(color));
    QPainter(&pixmap).drawRect(0, 0, side - 1, side - 1);
    return pixmap;
}

QTreeWidgetItem* ItemOf(std::size_t number, const TPathTool& tool, const TPathSums& sums,
                        bool isShown) {
    auto* item = new QTreeWidgetItem(
        {NameOf(tool), TimeText(sums.Seconds()), LengthText(sums.CutLength),
         LengthText(sums.RapidLength), RangeText(tool.MinFeed, tool.MaxFeed),
         RangeText(tool.MinSpeed, tool.MaxSpeed), QLocale().toString(sums.Moves)});
    for (int column = TimeInList; column <= MovesInList; ++column)
        item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    item->setIcon(NameInList, Swatch(ShownFor(tool.Color)));
    item->setToolTip(NameInList, NameOf(tool));
    item->setCheckState(NameInList, isShown ? Qt::Checked : Qt::Unchecked);
    item->setData(NameInList, Qt::UserRole, QVariant::fromValue(number));
    return item;
}

} // namespace

TToolsList::TToolsList(QWidget* parent) : QTreeWidget(parent) {
    setHeaderLabels({QStringLiteral("Tool"), QStringLiteral("Time"), QStringLiteral("Cut"),
                     QStringLiteral("Rapid"), QStringLiteral("Feed mm/min"),
                     QStringLiteral("Speed 1/min"), QStringLiteral("Moves")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setSelectionMode(NoSelection);
    setFocusPolicy(Qt::NoFocus); // Space plays
    setSizeAdjustPolicy(AdjustToContents);
    header()->setStretchLastSection(false);
    connect(this, &QTreeWidget::itemChanged, this, &TToolsList::HiddenChanged);
}

void TToolsList::SetProgram(const TToolPath& path, const TToolPathStatistics& statistics) {
    const QSignalBlocker blocker(this);
    const std::set<std::size_t> hidden = Hidden();
    clear();
    QList<QTreeWidgetItem*> items;
    for (std::size_t i = 0; i < path.Tools().size(); ++i)
        if (statistics.ByTool[i].Moves > 0)
            items << ItemOf(i, path.Tools()[i], statistics.ByTool[i], !hidden.contains(i));
    addTopLevelItems(items);
    for (int column = NameInList; column <= MovesInList; ++column) resizeColumnToContents(column);
    setColumnWidth(NameInList, std::min(columnWidth(NameInList), WidestName));
    updateGeometry();
}

std::set<std::size_t> TToolsList::Hidden() const {
    std::set<std::size_t> hidden;
    for (int i = 0; i < topLevelItemCount(); ++i)
        if (const QTreeWidgetItem* item = topLevelItem(i);
            item->checkState(NameInList) == Qt::Unchecked)
            hidden.insert(item->data(NameInList, Qt::UserRole).value<std::size_t>());
    return hidden;
}

void TToolsList::ShowAll() {
    for (int i = 0; i < topLevelItemCount(); ++i)
        topLevelItem(i)->setCheckState(NameInList, Qt::Checked);
}

QSize TToolsList::sizeHint() const {
    const int rows = std::clamp(topLevelItemCount(), 1, MostRows);
    const int height = header()->sizeHint().height() + rows * std::max(sizeHintForRow(0), 18) +
                       2 * frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return {QTreeWidget::sizeHint().width(), height};
}

} // namespace ZEP
