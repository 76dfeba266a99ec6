#pragma once

#include <zep/view/MousePanel.h>

#include <QWidget>

namespace ZEP {

/// A rectangle over what its parent shows: in black and white dashes, seen on any background; in
/// solid blue where it selects what lies inside, in green dashes where it selects what it touches.
/// It is a native window, since OpenGL's would cover any other, and nothing but its border is
/// there.
class TZEPRubberBand : public QWidget {
    Q_OBJECT
public:
    explicit TZEPRubberBand(QWidget* parent);

    /// Shows it there, in the parent's pixels.
    void Stretch(const QRect& place);
    void SetBand(TZEPBand band);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TZEPBand m_band = TZEPBand::Plain;
};

} // namespace ZEP
