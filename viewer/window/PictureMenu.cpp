#include "viewer/window/PictureMenu.h"

#include "viewer/files/Document.h"
#include "viewer/window/PictureDialog.h"
#include "viewer/window/PrintDialog.h"
#include <zep/framework/UserError.h>
#include <zep/view/Panel.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QScopeGuard>
#include <QStatusBar>

namespace ZEP {

namespace {

constexpr int MessageTime = 5000; // ms

/// Of a file that is to stand beside the first one that is shown.
QString NameBeside(const TDocument& document, const QString& suffix) {
    if (document.Files().empty()) return QStringLiteral("zepview") + suffix;
    const QFileInfo file(document.Files().front().Name);
    return file.dir().filePath(file.completeBaseName() + suffix);
}

} // namespace

TPictureMenu::TPictureMenu(QMainWindow* window, QMenu* menu, TDocument& document,
                           std::function<TSeen()> seen)
    : QObject(window), m_window(window), m_document(document), m_seen(std::move(seen)) {
    const auto add = [&](const QString& text, const QKeySequence& keys, auto action,
                         const QString& tip) {
        QAction* entry = menu->addAction(text, keys, this, action);
        entry->setStatusTip(tip);
        return entry;
    };
    add(QStringLiteral("&Save picture..."), QKeySequence::Save, &TPictureMenu::AskForPicture,
        QStringLiteral("Write what is seen as a picture, in any size"));
    add(QStringLiteral("&Copy picture"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C),
        &TPictureMenu::CopySeen, QStringLiteral("Put what is seen on the clipboard"));
    QAction* print =
        add(QStringLiteral("&Print..."), QKeySequence::Print, &TPictureMenu::AskForPaper,
            QStringLiteral("Put what is seen on paper, or what is shown true to scale"));
    print->setEnabled(false);
    connect(&document, &TDocument::Changed, print,
            [this, print] { print->setEnabled(!m_document.Files().empty()); });
}

template <class Task>
bool TPictureMenu::Try(const QString& title, Task&& task) {
    QString error;
    {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        const auto back = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
        try {
            task();
            return true;
        } catch (const std::exception& thrown) {
            error = ErrorReport(thrown);
        }
    }
    QMessageBox::critical(m_window, title, error);
    return false;
}

void TPictureMenu::Say(const QString& text) {
    m_window->statusBar()->showMessage(text, MessageTime);
}

void TPictureMenu::AskForPicture() {
    const TZEPPanel& panel = *m_seen().Panel;
    TPictureDialog dialog(m_window, {panel.Width(), panel.Height()});
    connect(&dialog, &TPictureDialog::SaveWanted, &dialog, [this, &dialog] {
        if (SavePicture(dialog.Wish())) dialog.accept();
    });
    connect(&dialog, &TPictureDialog::CopyWanted, &dialog, [this, &dialog] {
        CopyPicture(dialog.Wish());
        dialog.accept();
    });
    dialog.exec();
}

bool TPictureMenu::SavePicture(const TPictureWish& wish) {
    const QString name = QFileDialog::getSaveFileName(
        m_window, QStringLiteral("Save picture"), NameBeside(m_document, QStringLiteral(".png")),
        PictureFilters());
    if (name.isEmpty()) return false;
    return Try(QStringLiteral("Cannot save"), [&] {
        const auto [panel, backdrop] = m_seen();
        WritePicture(*panel, *backdrop, wish, name);
        Say(QStringLiteral("Saved as %1.").arg(name));
    });
}

void TPictureMenu::CopySeen() {
    const TZEPPanel& panel = *m_seen().Panel;
    CopyPicture({.Size = {panel.Width(), panel.Height()}});
}

void TPictureMenu::CopyPicture(const TPictureWish& wish) {
    Try(QStringLiteral("Cannot copy"), [&] {
        const auto [panel, backdrop] = m_seen();
        QApplication::clipboard()->setImage(DrawPicture(*panel, *backdrop, wish));
        Say(QStringLiteral("Copied %1 by %2 pixels.")
                .arg(wish.Size.width())
                .arg(wish.Size.height()));
    });
}

void TPictureMenu::AskForPaper() {
    TZEPPanel* panel = m_seen().Panel;
    TPrintDialog dialog(m_window, panel, m_document);
    connect(&dialog, &TPrintDialog::PdfWanted, &dialog, [&] {
        const QString name = QFileDialog::getSaveFileName(
            &dialog, QStringLiteral("Save as PDF"), NameBeside(m_document, QStringLiteral(".pdf")),
            QStringLiteral("PDF (*.pdf)"));
        const auto write = [&] { WritePaper(*panel, m_document, dialog.Wish(), name); };
        if (name.isEmpty() || !Try(QStringLiteral("Cannot save"), write)) return;
        Say(QStringLiteral("Saved as %1.").arg(name));
        dialog.accept();
    });
    connect(&dialog, &TPrintDialog::PrintWanted, &dialog, [&] {
        QPrinter printer(QPrinter::HighResolution);
        if (QPrintDialog(&printer, &dialog).exec() != QDialog::Accepted) return;
        const auto print = [&] { Print(*panel, m_document, dialog.Wish(), printer); };
        if (Try(QStringLiteral("Cannot print"), print)) dialog.accept();
    });
    dialog.exec();
}

} // namespace ZEP
