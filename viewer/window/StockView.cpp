#include "viewer/window/StockView.h"

#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/stock/Workpiece.h>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

/// The window answers in between.
constexpr std::chrono::milliseconds Slice(40);
/// The first cut is seen to go on; drawing it takes so much of the time at most.
constexpr qint64 SeenEach = 250; // ms
constexpr qint64 PartsOfTime = 5;

} // namespace

TStockView::TStockView(QObject* parent, TZEPScene* scene) : QObject(parent), m_scene(scene) {
    connect(&m_timer, &QTimer::timeout, this, &TStockView::CutOn);
}

TStockView::~TStockView() {
    delete m_workpiece;
}

void TStockView::SetPath(std::shared_ptr<const TToolPath> path, const QString& program) {
    if (path == m_path) return;
    Remove();
    m_path = std::move(path);
    if (m_path) m_program = program;
    m_move = -1;
    m_part = 1;
    Q_EMIT PathChanged();
}

void TStockView::Cut(const TStockBlock& block, const std::vector<TStockTool>& tools) {
    if (!m_path || !m_scene) return;
    auto stock = std::make_shared<TStock>(block);
    auto run = std::make_unique<TStockRun>(*stock, *m_path, tools);
    m_stock = std::move(stock);
    m_run = std::move(run);
    m_isWhole = false;
    if (!m_workpiece) {
        m_workpiece = Add<TZEPWorkpiece>(m_scene.data());
        m_workpiece->SetPickable(false); // a click is for the path in it
        m_workpiece->SetSelectable(false);
    }
    m_workpiece->SetStock(m_stock);
    m_timer.start(0);
    Q_EMIT ShownChanged();
}

void TStockView::Remove() {
    if (!m_run) return;
    m_timer.stop();
    delete m_workpiece;
    m_run.reset();
    m_stock.reset();
    Q_EMIT ShownChanged();
}

void TStockView::Show(int move, double part) {
    if (move == m_move && part == m_part) return;
    m_move = move;
    m_part = part;
    if (!m_run || !m_isWhole) return;
    m_timer.stop();
    CutOn();
}

void TStockView::CutOn() {
    if (std::exchange(m_isSeen, false)) m_seeing = m_sinceSeen.elapsed();
    const bool goesToEnd = !m_isWhole || m_move < 0;
    const bool isPart = !goesToEnd && m_part < 1;
    const int moves = goesToEnd ? m_run->Count() : m_move + (isPart ? 0 : 1);
    const bool isThere = m_run->GoTo(moves, isPart ? m_part : 0, Slice);
    const bool wasWhole = m_isWhole;
    Refresh(wasWhole || isThere);
    m_isWhole = m_isWhole || isThere;
    if (isThere && wasWhole)
        m_timer.stop();
    else
        m_timer.start(0);
    if (!wasWhole) Q_EMIT Progressed();
}

void TStockView::Refresh(bool atOnce) {
    const qint64 apart = std::max(SeenEach, PartsOfTime * m_seeing);
    if (!m_workpiece || (!atOnce && m_sinceSeen.isValid() && m_sinceSeen.elapsed() < apart)) return;
    m_workpiece->Refresh();
    m_sinceSeen.start();
    m_isSeen = true;
}

std::vector<TRapidCut> TStockView::RapidCuts() const {
    return m_run ? m_run->RapidCuts() : std::vector<TRapidCut>();
}

double TStockView::Progress() const {
    if (m_isWhole || !m_run || m_run->Count() == 0) return 1;
    return static_cast<double>(m_run->Done()) / m_run->Count();
}

} // namespace ZEP
