#include <zep/framework/Message.h>

#include <QApplication>
#include <QMessageBox>

namespace ZEP {

namespace {

QMessageBox::Icon BoxIcon(TMessageIcon icon) {
    switch (icon) {
    case TMessageIcon::Information:
        return QMessageBox::Information;
    case TMessageIcon::Warning:
        return QMessageBox::Warning;
    case TMessageIcon::Hand:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

/// A box that nobody can close would stop the program.
bool CanShowBox() {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return false;
    const QString platform = QGuiApplication::platformName();
    return platform != u"offscreen" && platform != u"minimal";
}

void ShowBox(const QString& text, const QString& title, TMessageIcon icon) {
    if (CanShowBox())
        QMessageBox(BoxIcon(icon), title, text, QMessageBox::Ok).exec();
    else
        PrintText(stderr, title + QStringLiteral(": ") + text + QLatin1Char('\n'));
}

/// Boxes from the moment this library is loaded.
const struct InstallMessageBox {
    InstallMessageBox() { SetMessageHandler(ShowBox); }
    ~InstallMessageBox() { SetMessageHandler({}); }
} Install;

} // namespace

} // namespace ZEP
