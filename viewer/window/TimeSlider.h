#pragma once

#include <QSlider>

#include <functional>
#include <vector>

namespace ZEP {

/// A slider over the time of a program, from 0 to 1, with a tick at each tool change. A press goes
/// right there, and the pointer tells the time below it.
class TTimeSlider : public QSlider {
    Q_OBJECT
public:
    /// What the tool tip says of a place.
    using TTip = std::function<QString(double place)>;

    TTimeSlider();
    /// \param ticks  from 0 to 1, in order
    void SetTicks(std::vector<double> ticks);
    void SetTip(TTip tip) { m_tip = std::move(tip); }
    /// Without a signal.
    void SetPlace(double place);

Q_SIGNALS:
    /// The user goes there.
    void PlaceWanted(double place);

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// Along which the middle of the handle runs, in pixels.
    [[nodiscard]] QRect Way() const;
    [[nodiscard]] double PlaceAt(int x) const;

    std::vector<double> m_ticks;
    TTip m_tip;
};

} // namespace ZEP
