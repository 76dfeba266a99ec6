#include "viewer/window/WelcomePage.h"

#include "viewer/files/Format.h"
#include <zep/framework/Contrast.h>
#include <zep/view/Backdrop.h>
#include <zep/view/Camera.h>
#include <zep/view/MousePresets.h>
#include <zep/view/Panel.h>

#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace ZEP {

namespace {

constexpr int MostFiles = 6;
constexpr int LeastSide = 290; // pixels

/// Text and what is clicked, on a background of their kind.
struct TInks {
    const char *Title, *Text, *Link, *Hover;
};
constexpr TInks OnDark{"#e8eef4", "#b8c4d0", "#5abeff", "#ffffff"};
constexpr TInks OnBright{"#101820", "#303c48", "#0a4a86", "#000000"};

QString Style(TColor high, TColor low) {
    const TInks& inks = IsBright(high) ? OnBright : OnDark;
    const auto name = [](const char* ink) { return QString::fromLatin1(ink); };
    return QStringLiteral(
               "ZEP--TWelcomePage { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 %1, "
               "stop:1 %2); }"
               "QLabel { color: %3; font-size: 14px; }"
               "QLabel#Title { color: %4; font-size: 24px; }"
               "QPushButton { color: #ffffff; background: #2a6fb0; border: none; border-radius: "
               "4px; padding: 8px 24px; font-size: 15px; }"
               "QPushButton:hover, QPushButton:focus { background: #3b86cc; }"
               "QPushButton[flat=true] { color: %5; background: none; padding: 2px; "
               "font-size: 14px; }"
               "QPushButton[flat=true]:hover, QPushButton[flat=true]:focus { color: %6; }")
        .arg(ToQColor(high).name(), ToQColor(low).name(), name(inks.Text), name(inks.Title),
             name(inks.Link), name(inks.Hover));
}

QLabel* AddLabel(QVBoxLayout* layout, const QString& text) {
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignCenter);
    layout->addWidget(label);
    return label;
}

/// Those that most people have.
QString SuffixesOf(TFileFormat format) {
    constexpr qsizetype most = 6;
    const QStringList all = PatternsOf(format);
    QString text = all.first(std::min(all.size(), most)).join(QStringLiteral("   "));
    if (all.size() > most) text += QStringLiteral("   ...");
    return text.remove(QLatin1Char('*'));
}

} // namespace

TWelcomePage::TWelcomePage(QWidget* parent)
    : QWidget(parent), m_view(new TZEPPanel(this)), m_recent(new QVBoxLayout) {
    setAttribute(Qt::WA_StyledBackground);
    SetBackground({});
    m_view->SetCamera(m_start.Camera());
    m_view->installEventFilter(this);
    SetMousePreset(*m_view->PanelControl(), TZEPMousePreset::Cad);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_view, 1);
    layout->addWidget(MakeSide());
}

TWelcomePage::~TWelcomePage() {
    // The view lets go of the camera before the scene takes it away.
    delete m_view;
}

QWidget* TWelcomePage::MakeSide() {
    auto* side = new QWidget;
    side->setMinimumWidth(LeastSide);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(24, 24, 24, 24);
    layout->setSpacing(14);
    layout->addStretch(2);
    AddLabel(layout, QStringLiteral("Drop a file here"))->setObjectName(QStringLiteral("Title"));
    for (const TFileFormat format : KnownFormats()) AddLabel(layout, SuffixesOf(format));
    auto* open = new QPushButton(QStringLiteral("Open..."));
    open->setToolTip(QStringLiteral("Choose one or more files (Ctrl+O)"));
    connect(open, &QPushButton::clicked, this, &TWelcomePage::OpenWanted);
    layout->addWidget(open, 0, Qt::AlignCenter);
    layout->addSpacing(24);
    layout->addLayout(m_recent);
    layout->addStretch(3);
    return side;
}

void TWelcomePage::SetBackground(const std::optional<TColor>& color) {
    m_start.SetBackground(color);
    const auto colors = color ? TZEPBackdrop::TColors::Plain(*color) : TZEPBackdrop::TColors();
    const QString style = Style(colors.Top, colors.Bottom);
    if (style != styleSheet()) setStyleSheet(style);
}

bool TWelcomePage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_view && event->type() == QEvent::Resize && m_view->height() > 0)
        m_start.SetAspect(static_cast<double>(m_view->width()) / m_view->height());
    return QWidget::eventFilter(watched, event);
}

void TWelcomePage::showEvent(QShowEvent* event) {
    m_start.SetMoving(true);
    QWidget::showEvent(event);
}

void TWelcomePage::hideEvent(QHideEvent* event) {
    m_start.SetMoving(false);
    QWidget::hideEvent(event);
}

void TWelcomePage::SetRecentFiles(const QStringList& files) {
    while (QLayoutItem* item = m_recent->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    if (!files.isEmpty()) AddLabel(m_recent, QStringLiteral("Opened last"));
    for (const QString& file : files.mid(0, MostFiles)) {
        QString name = QFileInfo(file).fileName();
        auto* button = new QPushButton(name.replace(QLatin1Char('&'), QStringLiteral("&&")));
        button->setFlat(true);
        button->setToolTip(file);
        button->setCursor(Qt::PointingHandCursor);
        // Later, since opening rebuilds this list.
        const auto want = [this, file] { Q_EMIT FileWanted(file); };
        connect(button, &QPushButton::clicked, this, want, Qt::QueuedConnection);
        m_recent->addWidget(button, 0, Qt::AlignCenter);
    }
}

} // namespace ZEP
