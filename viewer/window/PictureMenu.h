#pragma once

#include <QObject>

#include <functional>

class QMainWindow;
class QMenu;

namespace ZEP {

class TDocument;
class TZEPBackdrop;
class TZEPPanel;
struct TPictureWish;

/// Entries of a menu by which what is seen goes to a file, to the clipboard and to paper.
class TPictureMenu : public QObject {
public:
    /// What is seen now.
    struct TSeen {
        TZEPPanel* Panel;
        TZEPBackdrop* Backdrop;
    };

    /// \param window    owns it
    /// \param document  what is printed
    TPictureMenu(QMainWindow* window, QMenu* menu, TDocument& document,
                 std::function<TSeen()> seen);

private:
    void AskForPicture();
    bool SavePicture(const TPictureWish& wish);
    void CopySeen();
    void CopyPicture(const TPictureWish& wish);
    void AskForPaper();
    template <class Task>
    bool Try(const QString& title, Task&& task);
    void Say(const QString& text);

    QMainWindow* m_window;
    TDocument& m_document;
    std::function<TSeen()> m_seen;
};

} // namespace ZEP
