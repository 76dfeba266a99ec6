#pragma once

#include <QTreeWidget>

#include <set>

namespace ZEP {

class TToolPath;
struct TToolPathStatistics;

/// The tools of a program that move, with their colours, feeds and times, each with a box to hide
/// its moves.
class TToolsList : public QTreeWidget {
    Q_OBJECT
public:
    explicit TToolsList(QWidget* parent = nullptr);

    /// Hidden tools stay hidden, by their number.
    void SetProgram(const TToolPath& path, const TToolPathStatistics& statistics);
    /// Numbers in `TToolPath::Tools`.
    [[nodiscard]] std::set<std::size_t> Hidden() const;
    void ShowAll();
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void HiddenChanged();
};

} // namespace ZEP
