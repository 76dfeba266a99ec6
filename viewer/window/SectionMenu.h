#pragma once

#include <zep/scene/Sections.h>

#include <QObject>

#include <array>

class QAction;
class QMainWindow;
class QMenu;

namespace ZEP {

class TDocument;
class TZEPPanel;
class TZEPSectionHandles;

/// The menu "Section" of the window: planes across x, y and z that cut open what is shown, each
/// with a handle in the view. They go with what they cut.
class TSectionMenu : public QObject {
    Q_OBJECT
public:
    /// Adds its entry to the menu. \param window  owns this, and tells in its status line
    TSectionMenu(QMenu* menu, QMainWindow* window, TZEPPanel* panel, TDocument& document);

private:
    void AddPlane(QMenu* menu, std::size_t axis);
    void AddFlip(QMenu* menu, std::size_t axis);
    void Set(const TZEPSections& sections);
    void Switch(std::size_t axis, bool on);
    void Follow();
    void Tell(std::size_t axis);

    QMainWindow* m_window;
    TDocument& m_document;
    TZEPSectionHandles* m_handles; ///< owned by the panel
    std::array<QAction*, SectionCount> m_planes{};
    std::array<QAction*, SectionCount> m_flips{};
    QAction* m_remove = nullptr;
};

} // namespace ZEP
