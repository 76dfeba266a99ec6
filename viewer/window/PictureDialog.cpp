#include "viewer/window/PictureDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>
#include <QSpinBox>

namespace ZEP {

namespace {

const QString ScaleKey = QStringLiteral("picture/scale");
const QString TransparentKey = QStringLiteral("picture/transparent");
const QString GuidesKey = QStringLiteral("picture/guides");

QSpinBox* SideBox(int value, const QString& name) {
    auto* box = new QSpinBox;
    box->setObjectName(name);
    box->setRange(1, TPictureWish::LargestSide);
    box->setValue(value);
    box->setSuffix(QStringLiteral(" px"));
    box->setAccelerated(true);
    return box;
}

/// The other side of what keeps its shape.
void Follow(QSpinBox& other, int side, int seen, int otherSeen) {
    const QSignalBlocker quiet(other);
    other.setValue(qRound(static_cast<double>(side) * otherSeen / qMax(seen, 1)));
}

} // namespace

TPictureDialog::TPictureDialog(QWidget* parent, const QSize& seen)
    : QDialog(parent), m_seen(seen), m_width(SideBox(seen.width(), QStringLiteral("PictureWidth"))),
      m_height(SideBox(seen.height(), QStringLiteral("PictureHeight"))),
      m_keepsShape(new QCheckBox(QStringLiteral("&Keep the shape of the view"))),
      m_scale(new QDoubleSpinBox),
      m_transparent(new QCheckBox(QStringLiteral("&Transparent background"))),
      m_guides(new QCheckBox(QStringLiteral("&Grid, axes and directions"))) {
    setWindowTitle(QStringLiteral("Save picture"));
    setLayout(new QFormLayout);
    AddSize();
    AddChoices();
    AddButtons();
    connect(this, &QDialog::finished, this, &TPictureDialog::Remember);
}

void TPictureDialog::AddSize() {
    auto* sides = new QHBoxLayout;
    sides->addWidget(m_width);
    sides->addWidget(new QLabel(QStringLiteral("x")));
    sides->addWidget(m_height);
    auto* form = static_cast<QFormLayout*>(layout());
    form->addRow(QStringLiteral("&Size"), sides);
    static_cast<QLabel*>(form->labelForField(sides))->setBuddy(m_width);
    m_keepsShape->setChecked(true);
    form->addRow(QString(), m_keepsShape);
    connect(m_width, &QSpinBox::valueChanged, this, [this](int side) {
        if (m_keepsShape->isChecked()) Follow(*m_height, side, m_seen.width(), m_seen.height());
    });
    connect(m_height, &QSpinBox::valueChanged, this, [this](int side) {
        if (m_keepsShape->isChecked()) Follow(*m_width, side, m_seen.height(), m_seen.width());
    });
}

void TPictureDialog::AddChoices() {
    const QSettings settings;
    m_scale->setObjectName(QStringLiteral("PictureScale"));
    m_scale->setRange(TPictureWish::LeastScale, TPictureWish::MostScale);
    m_scale->setSingleStep(0.5);
    m_scale->setPrefix(QStringLiteral("times "));
    m_scale->setValue(settings.value(ScaleKey, 1).toDouble());
    m_scale->setToolTip(QStringLiteral("How many times as thick as in the view lines are, and as "
                                       "large points and letters"));
    m_transparent->setChecked(settings.value(TransparentKey, false).toBool());
    m_transparent->setToolTip(
        QStringLiteral("What nothing covers is left out: for PNG, WebP and TIFF"));
    m_guides->setChecked(settings.value(GuidesKey, true).toBool());
    m_guides->setToolTip(QStringLiteral("Where the view shows them"));
    auto* form = static_cast<QFormLayout*>(layout());
    form->addRow(QStringLiteral("&Lines and letters"), m_scale);
    form->addRow(QString(), m_transparent);
    form->addRow(QString(), m_guides);
}

void TPictureDialog::AddButtons() {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    auto* copy = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this, &TPictureDialog::CopyWanted);
    connect(buttons, &QDialogButtonBox::accepted, this, &TPictureDialog::SaveWanted);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    static_cast<QFormLayout*>(layout())->addRow(buttons);
}

TPictureWish TPictureDialog::Wish() const {
    return {.Size = {m_width->value(), m_height->value()},
            .Scale = m_scale->value(),
            .Transparent = m_transparent->isChecked(),
            .Guides = m_guides->isChecked()};
}

void TPictureDialog::Remember() const {
    QSettings settings;
    settings.setValue(ScaleKey, m_scale->value());
    settings.setValue(TransparentKey, m_transparent->isChecked());
    settings.setValue(GuidesKey, m_guides->isChecked());
}

} // namespace ZEP
