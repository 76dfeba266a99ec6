#pragma once

#include "viewer/content/MoveFilter.h"

#include <QGroupBox>

#include <array>

class QAbstractSpinBox;
class QCheckBox;
class QDoubleSpinBox;
class QGridLayout;
class QSpinBox;
class QTimer;

namespace ZEP {

class TToolsList;
struct TToolPathStatistics;

/// Chooses which moves of a program are shown: by kind, tool, height and line.
class TMoveFilterBox : public QGroupBox {
    Q_OBJECT
public:
    explicit TMoveFilterBox(QWidget* parent = nullptr);

    /// \param keeps  what is chosen; else all is shown then
    void SetProgram(const TToolPath& path, const TToolPathStatistics& statistics, bool keeps);
    /// Times have changed.
    void SetTimes(const TToolPath& path, const TToolPathStatistics& statistics);
    [[nodiscard]] TMoveFilter Filter() const;
    void ShowAll();

Q_SIGNALS:
    /// Once for changes that follow each other closely.
    void Changed();

private:
    void AddKinds(QGridLayout* layout);
    void AddRanges(QGridLayout* layout);
    void ShowCounts(const TToolPathStatistics& statistics);

    std::array<QCheckBox*, ToolMoveKinds> m_kinds{};
    QCheckBox *m_z, *m_lines;
    QDoubleSpinBox *m_lowZ, *m_highZ;
    QSpinBox *m_firstLine, *m_lastLine;
    TToolsList* m_tools;
    QTimer* m_changes;
};

} // namespace ZEP
