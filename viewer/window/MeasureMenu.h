#pragma once

#include <zep/view/Dimension.h>

#include <QObject>

#include <vector>

class QAction;
class QMainWindow;
class QMenu;
class QUndoStack;

namespace ZEP {

class TDocument;
class TZEPMeasureTool;
class TZEPPanel;

/// The menu "&Measure" of the window: distances, angles, radii and chains, which stay as dimensions
/// in the file that they were measured in, until they are removed. All of it can be undone.
class TMeasureMenu : public QObject {
    Q_OBJECT
public:
    /// \param window  owns this, and tells in its status line
    TMeasureMenu(QMainWindow* window, TZEPPanel* panel, TDocument& document, QUndoStack& stack);

private:
    void AddTool(QMenu* menu, const QString& text, Qt::Key key, TZEPDimensionKind kind,
                 const QString& tip);
    void Start(TZEPDimensionKind kind);
    void Keep(TZEPDimension* dimension, const TZEPObject* of);
    void Tell(const QString& text);
    void Copy();
    void RemoveAll();
    void Follow();
    [[nodiscard]] std::vector<TZEPDimension*> Dimensions() const;

    QMainWindow* m_window;
    TZEPPanel* m_panel;
    TDocument& m_document;
    QUndoStack& m_stack;
    TZEPMeasureTool* m_tool; ///< owned by the panel
    std::vector<QAction*> m_tools;
    std::vector<QAction*> m_ofAll; ///< need dimensions
};

} // namespace ZEP
