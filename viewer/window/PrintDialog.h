#pragma once

#include "viewer/files/Paper.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPrinter;
class QPrintPreviewWidget;
class QPushButton;

namespace ZEP {

/// Asks how what is shown comes to paper, and shows the pages as they will be. The choices are
/// remembered.
class TPrintDialog : public QDialog {
    Q_OBJECT
public:
    TPrintDialog(QWidget* parent, TZEPPanel* panel, TDocument& document);
    ~TPrintDialog() override;

    [[nodiscard]] const TPaperWish& Wish() const { return m_wish; }

Q_SIGNALS:
    void PrintWanted();
    void PdfWanted();

private:
    void AddChoices();
    void AddButtons();
    void ReadChoices();
    void ChoicesChanged();
    void PaintPreview(QPrinter* printer);
    void Remember() const;

    TZEPPanel* m_panel;
    TDocument& m_document;
    TPaperWish m_wish;
    QComboBox* m_page;
    QComboBox* m_orientation;
    QComboBox* m_scale;
    QDoubleSpinBox* m_lineWidth;
    QCheckBox* m_title;
    QCheckBox* m_guides;
    QLabel* m_note; ///< what is wrong, or how many pages it takes
    QPushButton* m_print = nullptr;
    QPushButton* m_pdf = nullptr;
    std::unique_ptr<QPrinter> m_paper; ///< of the preview
    QPrintPreviewWidget* m_preview;
};

} // namespace ZEP
