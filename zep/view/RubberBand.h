#pragma once

#include <QWidget>

namespace ZEP {

/// A rectangle in black and white dashes over what its parent shows, seen on any background. It is
/// a native window, since OpenGL's would cover any other, and nothing but its border is there.
class TZEPRubberBand : public QWidget {
    Q_OBJECT
public:
    explicit TZEPRubberBand(QWidget* parent);

    /// Shows it there, in the parent's pixels.
    void Stretch(const QRect& place);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace ZEP
