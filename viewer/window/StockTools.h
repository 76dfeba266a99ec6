#pragma once

#include <zep/stock/Tool.h>

#include <QTableWidget>

#include <map>
#include <vector>

namespace ZEP {

class TToolPath;

/// What the tools of a program cut with, as it is guessed at first, to be changed: a row for each
/// tool that moves.
class TStockTools : public QTableWidget {
public:
    explicit TStockTools(QWidget* parent = nullptr);

    /// Guesses anew.
    /// \param path   null: no tools
    /// \param keeps  but for tools that the user has changed, by their numbers
    void SetPath(const TToolPath* path, bool keeps);
    /// As many as the path has.
    [[nodiscard]] std::vector<TStockTool> Tools() const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    void KeepChanged();
    void AddRow(std::size_t tool, const QString& name);

    std::vector<TStockTool> m_guessed;
    std::vector<qint64> m_numbers;   ///< of the tools
    std::vector<std::size_t> m_rows; ///< which of them
    std::map<qint64, TStockTool> m_changed;
};

} // namespace ZEP
