#include <zep/framework/UserError.h>
#include <zep/view/Panel.h>

#include <QPainter>
#include <QPrinter>

#include <algorithm>

namespace ZEP {

namespace {

/// Pixels along the longer side of a page; 300 to the inch on A3.
constexpr int FinestPrint = 5000;

} // namespace

void TZEPPanel::Print(QPrinter& printer) {
    const QSize page = printer.pageLayout().paintRectPixels(printer.resolution()).size();
    const QSize view = QSize(std::max(Width(), 1), std::max(Height(), 1));
    const QSize place = view.scaled(page, Qt::KeepAspectRatio);
    const QImage image =
        RenderToCanvas(place.boundedTo(view.scaled(FinestPrint, FinestPrint, Qt::KeepAspectRatio)));
    if (printer.docName().isEmpty()) printer.setDocName(QStringLiteral("ZEP rendered image"));
    QPainter painter;
    if (!painter.begin(&printer)) {
        const QString target =
            printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
        throw TUserError(QStringLiteral("Print: cannot print to %1").arg(target),
                         QStringLiteral("%1 takes no pages: choose another one.").arg(target));
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(
        QRect(QPoint((page.width() - place.width()) / 2, (page.height() - place.height()) / 2),
              place),
        image);
}

void TZEPPanel::Print() {
    QPrinter printer(QPrinter::HighResolution);
    Print(printer);
}

} // namespace ZEP
