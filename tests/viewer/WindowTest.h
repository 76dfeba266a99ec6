#pragma once

#include "tests/FolderTest.h"
#include "tests/viewer/SampleFiles.h"
#include "viewer/window/MainWindow.h"
#include <zep/batch/Batch.h>

#include <QApplication>
#include <QSettings>
#include <QTest>

#include <optional>

namespace ZEP {

/// A test of the window, with settings of its own, and a drawing and a model to show.
class WindowTest : public FolderTest {
protected:
    WindowTest() {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, Path("."));
        QSettings().clear();
    }

    void Show(const QStringList& files) {
        m_window.emplace(false);
        m_window->show();
        m_window->OpenFiles(files);
        QApplication::setActiveWindow(&*m_window);
        QTest::qWait(50);
    }
    /// Layers "p" with two lines, "q" with one, and "off", which is switched off.
    QString PutDrawing(const char* name = "a.dxf") {
        using namespace Sample;
        return Put(name, Drawing(Layer("p", 1) + Layer("q", 2) + Layer("off", -3),
                                 LineOn("p") + LineOn("p") + LineOn("q")));
    }
    /// Meshes "Wheel" and "Axle" and the camera "Eye".
    QString PutModel(const char* name = "b.3ds") {
        using namespace Sample;
        return Put(name, Model(Material("steel", 200) + Mesh("Wheel", "steel") + Mesh("Axle", "") +
                               Camera("Eye", {9, 0, 1, 0, 0, 1, 0, 50})));
    }
    [[nodiscard]] const TDocument& Document() const { return m_window->Document(); }
    [[nodiscard]] TZEPObject& Root(std::size_t file) const {
        return *Document().Files()[file].Root;
    }
    [[nodiscard]] QAction* Action(const char* text) const {
        for (QAction* action : m_window->findChildren<QAction*>())
            if (action->text().remove(QLatin1Char('&')) == QLatin1String(text)) return action;
        ADD_FAILURE() << "no action " << text;
        return nullptr;
    }

    std::optional<TMainWindow> m_window;
};

} // namespace ZEP
