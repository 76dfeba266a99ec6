#include "viewer/window/SectionMenu.h"

#include "viewer/files/Document.h"
#include "viewer/window/StatusTip.h"
#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/SectionHandles.h>

#include <QLocale>
#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>

namespace ZEP {

namespace {

constexpr int MessageTime = 5000; // ms

constexpr TGLArrayd3 Normals[] = {unitx, {0, -1, 0}, unitz}; // towards who looks from the front
constexpr Qt::Key Keys[] = {Qt::Key_X, Qt::Key_Y, Qt::Key_Z};

QString NameOf(std::size_t axis) {
    return QStringLiteral("xyz").mid(static_cast<qsizetype>(axis), 1);
}

bool Meets(const TZEPSection& section, std::size_t axis, const std::optional<TZEPBounds>& box) {
    const double place = section.Distance * section.Normal[axis];
    return box && place >= box->Min[axis] && place <= box->Max[axis];
}

} // namespace

TSectionMenu::TSectionMenu(QMenu* menu, QMainWindow* window, TZEPPanel* panel, TDocument& document)
    : QObject(window), m_window(window), m_document(document),
      m_handles(new TZEPSectionHandles(panel)) {
    QMenu* sections = menu->addMenu(QStringLiteral("Sectio&n"));
    for (std::size_t axis = 0; axis < SectionCount; ++axis) AddPlane(sections, axis);
    sections->addSeparator();
    for (std::size_t axis = 0; axis < SectionCount; ++axis) AddFlip(sections, axis);
    sections->addSeparator();
    m_remove = Explained(sections->addAction(QStringLiteral("&Remove sections"), this,
                                             [this] { Set(TZEPSections{}); }),
                         QStringLiteral("Show everything whole again"));
    connect(m_handles, &TZEPSectionHandles::Moved, this, &TSectionMenu::Tell);
    connect(&document, &TDocument::Changed, this, &TSectionMenu::Follow);
    Follow();
}

void TSectionMenu::AddPlane(QMenu* menu, std::size_t axis) {
    QAction* plane = menu->addAction(QStringLiteral("Across &") + NameOf(axis));
    plane->setShortcut(QKeyCombination(Qt::SHIFT, Keys[axis]));
    plane->setCheckable(true);
    connect(plane, &QAction::triggered, this, [this, axis](bool on) { Switch(axis, on); });
    m_planes[axis] = Explained(plane, QStringLiteral("Cut open what is shown, in its middle; drag "
                                                     "the ball to cut elsewhere"));
}

void TSectionMenu::AddFlip(QMenu* menu, std::size_t axis) {
    const auto flip = [this, axis] {
        TZEPSections sections = m_document.Camera()->Sections();
        sections[axis] = sections[axis].Flipped();
        Set(sections);
    };
    m_flips[axis] = Explained(menu->addAction(QStringLiteral("Flip ") + NameOf(axis), this, flip),
                              QStringLiteral("Cut away the other side"));
}

void TSectionMenu::Switch(std::size_t axis, bool on) {
    const std::optional<TZEPBounds> box = m_document.Bounds();
    if (!box) return Follow();
    TZEPSections sections = m_document.Camera()->Sections();
    sections[axis].Normal = Normals[axis];
    sections[axis].Distance = Dotd(Normals[axis], Middle(box->Min, box->Max));
    sections[axis].On = on;
    Set(sections);
    if (on) Tell(axis);
}

void TSectionMenu::Set(const TZEPSections& sections) {
    m_document.Camera()->SetSections(sections);
    Follow();
}

/// Planes beyond what is shown now cut nothing, or all of it.
void TSectionMenu::Follow() {
    const std::optional<TZEPBounds> box = m_document.Bounds();
    m_handles->SetContent(box);
    TZEPSections sections = m_document.Camera()->Sections();
    for (std::size_t axis = 0; axis < SectionCount; ++axis) {
        sections[axis].On = sections[axis].On && Meets(sections[axis], axis, box);
        m_planes[axis]->setEnabled(box.has_value());
        m_planes[axis]->setChecked(sections[axis].On);
        m_flips[axis]->setEnabled(sections[axis].On);
    }
    m_remove->setEnabled(AnyCuts(sections));
    m_document.Camera()->SetSections(sections);
}

void TSectionMenu::Tell(std::size_t axis) {
    const TZEPSection section = m_document.Camera()->Sections()[axis];
    const double place = section.Distance * section.Normal[axis];
    m_window->statusBar()->showMessage(
        QStringLiteral("Section at %1 = %2").arg(NameOf(axis), QLocale().toString(place, 'f', 3)),
        MessageTime);
}

} // namespace ZEP
