#include "viewer/window/PrintDialog.h"

#include <zep/framework/UserError.h>
#include <zep/view/PanelPages.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>

namespace ZEP {

namespace {

constexpr int PreviewResolution = 100; // pixels to the inch

const QString PageKey = QStringLiteral("print/page");
const QString OrientationKey = QStringLiteral("print/orientation");
const QString PageScaleKey = QStringLiteral("print/scale");
const QString LineWidthKey = QStringLiteral("print/lineWidth");
const QString TitleKey = QStringLiteral("print/title");
const QString PageGuidesKey = QStringLiteral("print/guides");

QComboBox* Choices(const QStringList& texts, bool editable) {
    auto* box = new QComboBox;
    box->addItems(texts);
    box->setEditable(editable);
    box->setInsertPolicy(QComboBox::NoInsert);
    return box;
}

} // namespace

TPrintDialog::TPrintDialog(QWidget* parent, TZEPPanel* panel, TDocument& document)
    : QDialog(parent), m_panel(panel), m_document(document),
      m_page(Choices({QStringLiteral("A4"), QStringLiteral("A3"), QStringLiteral("A2"),
                      QStringLiteral("A1"), QStringLiteral("A0"), QStringLiteral("Letter"),
                      QStringLiteral("Tabloid")},
                     true)),
      m_orientation(Choices(
          {QStringLiteral("Automatic"), QStringLiteral("Portrait"), QStringLiteral("Landscape")},
          false)),
      m_scale(Choices({QStringLiteral("Fit"), QStringLiteral("10:1"), QStringLiteral("5:1"),
                       QStringLiteral("2:1"), QStringLiteral("1:1"), QStringLiteral("1:2"),
                       QStringLiteral("1:5"), QStringLiteral("1:10"), QStringLiteral("1:20"),
                       QStringLiteral("1:50"), QStringLiteral("1:100"), QStringLiteral("1:200"),
                       QStringLiteral("1:500"), QStringLiteral("1:1000")},
                      true)),
      m_lineWidth(new QDoubleSpinBox), m_title(new QCheckBox(QStringLiteral("&Title line"))),
      m_guides(new QCheckBox(QStringLiteral("&Grid, axes and directions"))), m_note(new QLabel),
      m_paper(std::make_unique<QPrinter>(QPrinter::ScreenResolution)),
      m_preview(new QPrintPreviewWidget(m_paper.get())) {
    setWindowTitle(QStringLiteral("Print"));
    auto* row = new QHBoxLayout(this);
    auto* form = new QFormLayout;
    row->addLayout(form);
    row->addWidget(m_preview, 1);
    m_preview->setMinimumSize(320, 240);
    resize(920, 560);
    m_preview->fitInView();
    AddChoices();
    AddButtons();
    connect(m_preview, &QPrintPreviewWidget::paintRequested, this, &TPrintDialog::PaintPreview);
    connect(this, &QDialog::finished, this, &TPrintDialog::Remember);
    ReadChoices();
}

TPrintDialog::~TPrintDialog() {
    delete m_preview; // before its paper
}

void TPrintDialog::AddChoices() {
    const QSettings settings;
    m_page->setCurrentText(settings.value(PageKey, QStringLiteral("A4")).toString());
    m_page->setToolTip(QStringLiteral("A size by name, or such as 210x297 in millimetres"));
    m_orientation->setCurrentIndex(settings.value(OrientationKey, 0).toInt());
    m_scale->setCurrentText(settings.value(PageScaleKey, QStringLiteral("Fit")).toString());
    m_scale->setToolTip(
        QStringLiteral("Fit: the view as it is, on one page. A scale, such as 1:2: all that is "
                       "shown, in a parallel view from here, on as many pages as that takes"));
    m_lineWidth->setRange(0.05, 5);
    m_lineWidth->setSingleStep(0.05);
    m_lineWidth->setSuffix(QStringLiteral(" mm"));
    m_lineWidth->setValue(settings.value(LineWidthKey, 0.25).toDouble());
    m_title->setChecked(settings.value(TitleKey, true).toBool());
    m_title->setToolTip(QStringLiteral("The file, the scale and the number of the page"));
    m_guides->setChecked(settings.value(PageGuidesKey, false).toBool());
    m_note->setWordWrap(true);
    auto* form = static_cast<QFormLayout*>(layout()->itemAt(0)->layout());
    form->addRow(QStringLiteral("&Page"), m_page);
    form->addRow(QStringLiteral("&Orientation"), m_orientation);
    form->addRow(QStringLiteral("&Scale"), m_scale);
    form->addRow(QStringLiteral("&Line width"), m_lineWidth);
    form->addRow(QString(), m_title);
    form->addRow(QString(), m_guides);
    form->addRow(m_note);
    for (QComboBox* box : {m_page, m_orientation, m_scale})
        connect(box, &QComboBox::currentTextChanged, this, &TPrintDialog::ChoicesChanged);
    connect(m_lineWidth, &QDoubleSpinBox::valueChanged, this, &TPrintDialog::ChoicesChanged);
    for (QCheckBox* box : {m_title, m_guides})
        connect(box, &QCheckBox::toggled, this, &TPrintDialog::ChoicesChanged);
}

void TPrintDialog::AddButtons() {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, Qt::Vertical);
    m_print = buttons->addButton(QStringLiteral("&Print..."), QDialogButtonBox::ActionRole);
    m_pdf = buttons->addButton(QStringLiteral("Save as P&DF..."), QDialogButtonBox::ActionRole);
    connect(m_print, &QPushButton::clicked, this, &TPrintDialog::PrintWanted);
    connect(m_pdf, &QPushButton::clicked, this, &TPrintDialog::PdfWanted);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    static_cast<QFormLayout*>(layout()->itemAt(0)->layout())->addRow(buttons);
}

void TPrintDialog::ReadChoices() {
    bool fits = true;
    try {
        m_wish = {.Page = PageNamed(m_page->currentText()),
                  .Scale = ScaleNamed(m_scale->currentText()),
                  .LineWidth = m_lineWidth->value(),
                  .Title = m_title->isChecked(),
                  .Guides = m_guides->isChecked()};
        if (const int turned = m_orientation->currentIndex())
            m_wish.Orientation = turned == 1 ? QPageLayout::Portrait : QPageLayout::Landscape;
        const TPaper paper(*m_panel, m_document, m_wish, PreviewResolution);
        m_paper->setPageLayout(paper.Layout());
        const int pages = paper.Pages().Count();
        const QString scale = paper.Pages().ScaleText();
        m_note->setText((pages == 1 ? QStringLiteral("1 page")
                                    : QStringLiteral("%1 pages, %2 by %3")
                                          .arg(pages)
                                          .arg(paper.Pages().Columns())
                                          .arg(paper.Pages().Rows())) +
                        (scale.isEmpty() ? QString() : QStringLiteral(", ") + scale));
    } catch (const std::exception& error) {
        m_note->setText(ErrorReport(error));
        fits = false;
    }
    m_print->setEnabled(fits);
    m_pdf->setEnabled(fits);
    m_preview->setEnabled(fits);
}

void TPrintDialog::ChoicesChanged() {
    ReadChoices();
    if (m_pdf->isEnabled()) m_preview->updatePreview();
}

void TPrintDialog::PaintPreview(QPrinter* printer) {
    if (!m_pdf->isEnabled()) return;
    try {
        TPaper(*m_panel, m_document, m_wish, PreviewResolution).Pages().Print(*printer);
    } catch (const std::exception& error) {
        m_note->setText(ErrorReport(error));
    }
}

void TPrintDialog::Remember() const {
    QSettings settings;
    settings.setValue(PageKey, m_page->currentText());
    settings.setValue(OrientationKey, m_orientation->currentIndex());
    settings.setValue(PageScaleKey, m_scale->currentText());
    settings.setValue(LineWidthKey, m_lineWidth->value());
    settings.setValue(TitleKey, m_title->isChecked());
    settings.setValue(PageGuidesKey, m_guides->isChecked());
}

} // namespace ZEP
