#include "viewer/window/MoveFilterBox.h"

#include "viewer/content/ProgramText.h"
#include "viewer/window/ToolsList.h"
#include <zep/converters/rs274d/ToolPathStatistics.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr int SettleTime = 150; // ms: while a number is typed or a wheel turns
constexpr double FarthestZ = 1e9;

constexpr auto Dwell = static_cast<std::size_t>(TToolMoveKind::Dwell);

QCheckBox* Box(const QString& text, bool checked) {
    auto* box = new QCheckBox(text);
    box->setChecked(checked);
    box->setFocusPolicy(Qt::NoFocus); // Space plays
    return box;
}

/// Is there with its check box, and tells when a number is complete.
template <class Spin>
Spin* Number(QCheckBox* box) {
    auto* spin = new Spin;
    spin->setFocusPolicy(Qt::StrongFocus);
    spin->setKeyboardTracking(false);
    spin->setEnabled(false);
    QObject::connect(box, &QCheckBox::toggled, spin, &QWidget::setEnabled);
    return spin;
}

/// \param keeps  values within the range
template <class Spin, class Value>
void SetRange(Spin* low, Spin* high, Value least, Value most, bool keeps) {
    for (Spin* spin : {low, high}) spin->setRange(least, most);
    if (keeps) return;
    low->setValue(least);
    high->setValue(most);
}

} // namespace

TMoveFilterBox::TMoveFilterBox(QWidget* parent)
    : QGroupBox(QStringLiteral("Shown"), parent), m_z(Box(QStringLiteral("Z only"), false)),
      m_lines(Box(QStringLiteral("Lines only"), false)), m_lowZ(Number<QDoubleSpinBox>(m_z)),
      m_highZ(Number<QDoubleSpinBox>(m_z)), m_firstLine(Number<QSpinBox>(m_lines)),
      m_lastLine(Number<QSpinBox>(m_lines)), m_tools(new TToolsList), m_changes(new QTimer(this)) {
    auto* layout = new QGridLayout(this);
    AddKinds(layout);
    layout->addWidget(m_tools, layout->rowCount(), 0, 1, -1);
    AddRanges(layout);
    auto* all = new QPushButton(QStringLiteral("Show all"));
    all->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(all, layout->rowCount(), 0, 1, 3, Qt::AlignLeft);
    connect(all, &QPushButton::clicked, this, &TMoveFilterBox::ShowAll);
    m_changes->setSingleShot(true);
    m_changes->setInterval(SettleTime);
    connect(m_changes, &QTimer::timeout, this, &TMoveFilterBox::Changed);
    const auto tell = [this] { m_changes->start(); };
    connect(m_tools, &TToolsList::HiddenChanged, this, tell);
    for (QCheckBox* box : findChildren<QCheckBox*>()) connect(box, &QCheckBox::toggled, this, tell);
    for (QDoubleSpinBox* spin : {m_lowZ, m_highZ})
        connect(spin, &QDoubleSpinBox::valueChanged, this, tell);
    for (QSpinBox* spin : {m_firstLine, m_lastLine})
        connect(spin, &QSpinBox::valueChanged, this, tell);
}

void TMoveFilterBox::AddKinds(QGridLayout* layout) {
    constexpr int columns = 3;
    for (std::size_t kind = 0; kind < ToolMoveKinds; ++kind) {
        m_kinds[kind] = Box(KindName(kind), true);
        const int place = static_cast<int>(kind);
        layout->addWidget(m_kinds[kind], place / columns, place % columns);
    }
    m_kinds[Dwell]->setEnabled(false);
    m_kinds[Dwell]->setToolTip(QStringLiteral("The tool stands still: nothing is drawn"));
}

void TMoveFilterBox::AddRanges(QGridLayout* layout) {
    m_z->setToolTip(QStringLiteral("Only moves that lie within these heights, in mm"));
    m_lines->setToolTip(QStringLiteral("Only moves of these lines of the program"));
    const auto add = [&](QCheckBox* box, QWidget* low, QWidget* high) {
        const int row = layout->rowCount();
        layout->addWidget(box, row, 0);
        layout->addWidget(low, row, 1);
        layout->addWidget(high, row, 2);
    };
    for (QDoubleSpinBox* spin : {m_lowZ, m_highZ}) spin->setDecimals(3);
    add(m_z, m_lowZ, m_highZ);
    add(m_lines, m_firstLine, m_lastLine);
}

void TMoveFilterBox::ShowCounts(const TToolPathStatistics& statistics) {
    for (std::size_t kind = 0; kind < ToolMoveKinds; ++kind)
        m_kinds[kind]->setText(QStringLiteral("%1 %2").arg(
            KindName(kind), QLocale().toString(statistics.MovesByKind[kind])));
}

void TMoveFilterBox::SetProgram(const TToolPath& path, const TToolPathStatistics& statistics,
                                bool keeps) {
    if (!keeps) ShowAll();
    SetTimes(path, statistics);
    ShowCounts(statistics);
    qint64 lastLine = 1;
    for (int i = 0; i < path.Count(); ++i) lastLine = std::max(lastLine, path.Move(i).Line);
    SetRange(m_firstLine, m_lastLine, 1, static_cast<int>(lastLine), keeps && m_lines->isChecked());
    const TZEPBounds bounds = statistics.Bounds.value_or(TZEPBounds{});
    const auto within = [](double z) { return std::clamp(z, -FarthestZ, FarthestZ); };
    // Rounded outwards, so that the whole range shows all.
    SetRange(m_lowZ, m_highZ, std::floor(within(bounds.Min[2]) * 1000) / 1000,
             std::ceil(within(bounds.Max[2]) * 1000) / 1000, keeps && m_z->isChecked());
    m_changes->stop();
}

void TMoveFilterBox::SetTimes(const TToolPath& path, const TToolPathStatistics& statistics) {
    m_tools->SetProgram(path, statistics);
}

TMoveFilter TMoveFilterBox::Filter() const {
    TMoveFilter filter{.HiddenTools = m_tools->Hidden()};
    for (std::size_t kind = 0; kind < ToolMoveKinds; ++kind)
        filter.HiddenKinds[kind] = !m_kinds[kind]->isChecked();
    if (m_z->isChecked()) filter.Z = {m_lowZ->value(), m_highZ->value()};
    if (m_lines->isChecked()) filter.Lines = {m_firstLine->value(), m_lastLine->value()};
    return filter;
}

void TMoveFilterBox::ShowAll() {
    for (QCheckBox* box : m_kinds) box->setChecked(true);
    for (QCheckBox* box : {m_z, m_lines}) box->setChecked(false);
    m_tools->ShowAll();
}

} // namespace ZEP
