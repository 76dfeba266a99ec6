#include "viewer/window/ProgramDock.h"

#include "viewer/content/ProgramText.h"
#include "viewer/window/MoveFilterBox.h"
#include "viewer/window/SourceDock.h"
#include <zep/batch/Batch.h>
#include <zep/converters/rs274d/ToolPathStatistics.h>

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSettings>
#include <QStyle>
#include <QVBoxLayout>

namespace ZEP {

namespace {

constexpr double SlowestRapid = 1, FastestRapid = 1e6; // mm/min
const QString RapidRateKey = QStringLiteral("program/rapidRate");

QDoubleSpinBox* RateBox() {
    auto* box = new QDoubleSpinBox;
    box->setObjectName(QStringLiteral("RapidRate"));
    box->setRange(SlowestRapid, FastestRapid);
    box->setDecimals(0);
    box->setSingleStep(1000);
    box->setSuffix(QStringLiteral(" mm/min"));
    box->setGroupSeparatorShown(true);
    box->setKeyboardTracking(false);
    box->setFocusPolicy(Qt::ClickFocus); // the arrow keys step through the program
    box->setValue(QSettings().value(RapidRateKey, TToolPath::DefaultRapidRate).toDouble());
    box->setToolTip(QStringLiteral("How fast the machine moves in rapid; accelerations and tool "
                                   "changes are left out of the times"));
    return box;
}

QString TableOf(const std::vector<TProgramFact>& facts) {
    QString text = QStringLiteral("<table>");
    for (const TProgramFact& fact : facts)
        text += QStringLiteral("<tr><td>%1&nbsp;&nbsp;</td><td>%2</td></tr>")
                    .arg(fact.Name, fact.Value.toHtmlEscaped());
    return text + QStringLiteral("</table>");
}

} // namespace

TProgramDock::TProgramDock(QWidget* parent, TSourceDock* source)
    : TShownDock(QStringLiteral("Program"), QStringLiteral("ProgramDock"), parent),
      m_source(source), m_note(new QLabel), m_facts(new QLabel), m_content(new QWidget),
      m_rate(RateBox()), m_filter(new TMoveFilterBox) {
    m_note->setWordWrap(true);
    m_facts->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* rate = new QHBoxLayout;
    rate->addWidget(new QLabel(QStringLiteral("Rapid rate")));
    rate->addWidget(m_rate, 1);
    auto* content = new QVBoxLayout(m_content);
    content->setContentsMargins({});
    content->addWidget(m_facts);
    content->addLayout(rate);
    content->addWidget(m_filter);
    auto* inside = new QWidget;
    auto* layout = new QVBoxLayout(inside);
    layout->addWidget(m_note);
    layout->addWidget(m_content);
    layout->addStretch();
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(inside);
    area->setMinimumWidth(inside->minimumSizeHint().width() +
                          style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    setWidget(area);
    connect(source, &TSourceDock::ProgramChanged, this, &TProgramDock::FollowProgram);
    connect(m_rate, &QDoubleSpinBox::valueChanged, this, &TProgramDock::SetRapidRate);
    connect(m_filter, &TMoveFilterBox::Changed, this, &TProgramDock::ApplyFilter);
    FollowProgram();
}

TProgramDock::~TProgramDock() {
    if (m_root) m_root->SetHiddenChildren(nullptr);
}

void TProgramDock::FollowProgram() {
    if (m_root) m_root->SetHiddenChildren(nullptr);
    const TProgram* program = m_source->Program();
    m_root = program ? qobject_cast<TZEPBatch*>(program->Root) : nullptr;
    m_path = program ? program->Path : nullptr;
    m_content->setVisible(m_path != nullptr);
    m_note->setVisible(!m_path);
    m_note->setText(program && program->Text.isEmpty()
                        ? QStringLiteral("The text of this program is not beside the scene, or it "
                                         "is newer: nothing is known of its times and tools.")
                        : QStringLiteral("The text beside the scene makes other moves: nothing is "
                                         "known of times and tools."));
    Offer(program != nullptr);
    if (!m_path) return;
    m_path->SetRapidRate(m_rate->value());
    const TToolPathStatistics statistics = StatisticsOf(*m_path);
    m_facts->setText(TableOf(FactsOf(statistics)));
    const bool isSame = !program->Text.isEmpty() && program->Text == m_file;
    m_file = program->Text;
    m_filter->SetProgram(*m_path, statistics, isSame);
    if (isSame) ApplyFilter();
}

void TProgramDock::SetRapidRate(double rate) {
    QSettings().setValue(RapidRateKey, rate);
    if (!m_path) return;
    m_path->SetRapidRate(rate);
    const TToolPathStatistics statistics = StatisticsOf(*m_path);
    m_facts->setText(TableOf(FactsOf(statistics)));
    m_filter->SetTimes(*m_path, statistics);
    Q_EMIT TimesChanged();
}

void TProgramDock::ApplyFilter() {
    if (m_path && m_root) m_root->SetHiddenChildren(HiddenObjects(*m_path, m_filter->Filter()));
}

} // namespace ZEP
