#pragma once

#include "viewer/files/Picture.h"

#include <QDialog>

class QCheckBox;
class QDoubleSpinBox;
class QSpinBox;

namespace ZEP {

/// Asks what a picture is to be, and whether it goes to a file or to the clipboard. All but the
/// size is remembered.
class TPictureDialog : public QDialog {
    Q_OBJECT
public:
    /// \param seen  size of the view, which the picture has at first
    TPictureDialog(QWidget* parent, const QSize& seen);

    [[nodiscard]] TPictureWish Wish() const;

Q_SIGNALS:
    void SaveWanted();
    void CopyWanted();

private:
    void AddSize();
    void AddChoices();
    void AddButtons();
    void Remember() const;

    QSize m_seen;
    QSpinBox* m_width;
    QSpinBox* m_height;
    QCheckBox* m_keepsShape;
    QDoubleSpinBox* m_scale;
    QCheckBox* m_transparent;
    QCheckBox* m_guides;
};

} // namespace ZEP
