#include "viewer/window/PlaySpeed.h"

#include <QSignalBlocker>

#include <iterator>

namespace ZEP {

namespace {

using TPace = TToolPlayback::TPace;

struct TSpeed {
    TPace Pace;
    double Factor;

    [[nodiscard]] QString Text() const {
        const QString number = QString::number(Factor);
        return Pace == TPace::Machine ? number + QStringLiteral("x")
                                      : number + QStringLiteral(" moves/s");
    }
};

constexpr TSpeed Speeds[] = {{TPace::Machine, 0.1}, {TPace::Machine, 0.5}, {TPace::Machine, 1},
                             {TPace::Machine, 2},   {TPace::Machine, 5},   {TPace::Machine, 10},
                             {TPace::Machine, 30},  {TPace::Machine, 100}, {TPace::Moves, 1},
                             {TPace::Moves, 5},     {TPace::Moves, 20},    {TPace::Moves, 100},
                             {TPace::Moves, 500},   {TPace::Moves, 2500}};
constexpr int RealTime = 2;
constexpr int Calm = 10; // moves a second, where there are no times

} // namespace

QString NoTimesText() {
    return QStringLiteral("No times are known: the program states no feeds, or its text is not "
                          "there");
}

TPlaySpeed::TPlaySpeed(TToolPlayback& playback) : m_playback(playback) {
    setFocusPolicy(Qt::NoFocus); // the arrow keys step through the program
    setMaxVisibleItems(static_cast<int>(std::size(Speeds)));
    connect(this, &QComboBox::currentIndexChanged, this, &TPlaySpeed::Apply);
    Offer();
}

void TPlaySpeed::Offer() {
    const bool times = m_playback.HasTimes();
    if (count() > 0 && times == m_offersTimes) return;
    m_offersTimes = times;
    const QSignalBlocker blocker(this);
    clear();
    for (std::size_t i = 0; i < std::size(Speeds); ++i)
        if (times || Speeds[i].Pace == TPace::Moves) addItem(Speeds[i].Text(), static_cast<int>(i));
    setCurrentIndex(findData(times ? RealTime : Calm));
    setToolTip(times ? QStringLiteral("Times the speed of the machine, or moves a second")
                     : NoTimesText());
    Apply();
}

void TPlaySpeed::Apply() {
    const TSpeed& speed = Speeds[currentData().toUInt()];
    m_playback.SetSpeed(speed.Factor, speed.Pace);
}

} // namespace ZEP
