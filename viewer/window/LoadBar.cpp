#include "viewer/window/LoadBar.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>

namespace ZEP {

namespace {

constexpr int Steps = 1000;
constexpr int Moment = 300;       // ms: shorter loads show nothing
constexpr int EventInterval = 16; // ms

} // namespace

TLoadBar::TLoadBar(QWidget* parent)
    : QWidget(parent), m_label(new QLabel(this)), m_bar(new QProgressBar(this)) {
    auto* cancel = new QToolButton(this);
    cancel->setObjectName(QStringLiteral("Cancel"));
    cancel->setText(QStringLiteral("Cancel"));
    cancel->setShortcut(Qt::Key_Escape);
    cancel->setToolTip(QStringLiteral("Stop loading and keep what is shown (Esc)"));
    connect(cancel, &QToolButton::clicked, this, &TLoadBar::Cancel);
    m_bar->setRange(0, Steps);
    m_bar->setFixedWidth(260);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label);
    layout->addWidget(m_bar);
    layout->addWidget(cancel);
    hide();
}

void TLoadBar::Start() {
    m_loading = true;
    m_cancelled = false;
    m_sinceStart.start();
    m_sinceEvents.start();
}

bool TLoadBar::Progress(const QString& file, double fraction) {
    if (m_sinceEvents.elapsed() < EventInterval && fraction < 1) return !m_cancelled;
    m_bar->setValue(static_cast<int>(fraction * Steps));
    m_label->setText(fraction < 1 ? QStringLiteral("Opening ") + QFileInfo(file).fileName()
                                  : QStringLiteral("Preparing the view"));
    if (m_sinceStart.elapsed() > Moment) show();
    QCoreApplication::processEvents();
    m_sinceEvents.start();
    return !m_cancelled;
}

void TLoadBar::Finish() {
    m_loading = false;
    hide();
}

} // namespace ZEP
