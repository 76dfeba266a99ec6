#pragma once

#include <QObject>
#include <QPointer>

class QMainWindow;

namespace ZEP {

class TPlayback;
class TSourceDock;
class TStockDialog;
class TStockView;
class TZEPScene;

/// "Cut stock..." in the menu of the program: the block that the program cuts goes with the
/// playback, and is whole where no move is selected.
class TStockMenu : public QObject {
    Q_OBJECT
public:
    /// \param window  owns this
    TStockMenu(QMainWindow* window, TPlayback* playback, TSourceDock* source, TZEPScene* scene);
    ~TStockMenu() override;

Q_SIGNALS:
    /// The block came or went.
    void ShownChanged();

private:
    void ShowDialog();
    void TakeProgram();
    void Follow();
    void ShowProgress();
    /// A move that cuts in rapid.
    void GoTo(int move);

    QMainWindow* m_window;
    TPlayback* m_playback;
    TSourceDock* m_source;
    TStockView* m_view;
    QPointer<TStockDialog> m_dialog; ///< once it was asked for
};

} // namespace ZEP
