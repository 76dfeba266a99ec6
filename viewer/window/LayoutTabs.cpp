#include "viewer/window/LayoutTabs.h"

#include "viewer/files/Document.h"
#include "viewer/files/FileLayouts.h"
#include "viewer/window/StatusTip.h"
#include <zep/sheets/Layout.h>

#include <QAction>
#include <QFileInfo>
#include <QMenu>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace ZEP {

TLayoutTabs::TLayoutTabs(TDocument& document, std::function<double()> aspect)
    : m_document(document), m_aspect(std::move(aspect)) {
    setShape(QTabBar::RoundedSouth);
    setDrawBase(false);
    setExpanding(false);
    setFocusPolicy(Qt::NoFocus); // keys are the view's
    connect(this, &QTabBar::currentChanged, this, &TLayoutTabs::Show);
    connect(&document, &TDocument::Changed, this, &TLayoutTabs::List);
    connect(&document, &TDocument::LayoutShown, this, &TLayoutTabs::Follow);
    hide();
}

void TLayoutTabs::AddTo(QMenu* menu) {
    const auto add = [&](const QString& text, Qt::Key key, int way, const QString& tip) {
        m_steps.push_back(Explained(
            menu->addAction(text, QKeySequence(Qt::CTRL | key), this, [this, way] { Step(way); }),
            tip));
    };
    add(QStringLiteral("Ne&xt sheet"), Qt::Key_PageDown, 1,
        QStringLiteral("Show the next sheet of a drawing, after the last one the model"));
    add(QStringLiteral("Pre&vious sheet"), Qt::Key_PageUp, -1,
        QStringLiteral("Show the sheet before, before the first one the model"));
    List();
}

void TLayoutTabs::List() {
    {
        const QSignalBlocker quiet(this);
        while (count() > 0) removeTab(count() - 1);
        m_layouts = {nullptr};
        addTab(QStringLiteral("Model"));
        for (const TFileLayout& layout : LayoutsOf(m_document.Files())) {
            m_layouts.emplace_back(layout.Layout);
            // An ampersand would make a key of the next letter.
            const int tab = addTab(QString(layout.Name).replace(u'&', QStringLiteral("&&")));
            setTabToolTip(tab, QFileInfo(layout.File).fileName());
        }
    }
    setVisible(count() > 1);
    for (QAction* step : m_steps) step->setEnabled(count() > 1);
    Follow();
}

void TLayoutTabs::Follow() {
    const QSignalBlocker quiet(this);
    const auto shown = std::ranges::find(m_layouts, m_document.Layout(),
                                         [](const auto& layout) { return layout.data(); });
    if (shown != m_layouts.end()) setCurrentIndex(static_cast<int>(shown - m_layouts.begin()));
}

void TLayoutTabs::Show(int tab) {
    if (tab < 0 || static_cast<std::size_t>(tab) >= m_layouts.size()) return;
    m_document.ShowLayout(m_layouts[static_cast<std::size_t>(tab)], m_aspect());
}

void TLayoutTabs::Step(int way) {
    setCurrentIndex((currentIndex() + way + count()) % count());
}

} // namespace ZEP
