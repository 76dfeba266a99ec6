#include <zep/view/PanelVectors.h>

#include <zep/framework/UserError.h>
#include <zep/gl/Told.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/Panel.h>

#include <QPointer>
#include <QScopeGuard>

#ifdef ZEP_HAS_GL2PS
#include <gl2ps.h>

#include <cstdio>
#include <cstdlib>
#endif

namespace ZEP {

#ifdef ZEP_HAS_GL2PS

namespace {

constexpr GLint FirstBuffer = 1 << 18;   // values; what fits is cut up where it hides something
constexpr GLint LargestBuffer = 1 << 26; // values

/// The scene is drawn without what needs several passes over a place, and no panel is repainted.
class TPlainScene {
public:
    explicit TPlainScene(TZEPScene& scene)
        : m_scene(&scene), m_shadows(scene.Shadows()), m_mirrors(scene.Reflections()),
          m_manual(scene.ManualUpdate()) {
        scene.SetManualUpdate(true);
        scene.SetFShadows(false);
        scene.SetReflections(false);
        scene.Frame().IsNotRendering = true;
        SetTold({.LineWidth = [](GLfloat width) { gl2psLineWidth(width); },
                 .PointSize = [](GLfloat size) { gl2psPointSize(size); },
                 .Dotted = [](bool on) { Switch(GL2PS_LINE_STIPPLE, on); },
                 .Blended = [](bool on) { Switch(GL2PS_BLEND, on); }});
    }
    ~TPlainScene() {
        SetTold({});
        if (!m_scene) return;
        m_scene->Frame().IsNotRendering = false;
        m_scene->SetFShadows(m_shadows);
        m_scene->SetReflections(m_mirrors);
        m_scene->SetManualUpdate(m_manual);
    }
    TPlainScene(const TPlainScene&) = delete;
    TPlainScene& operator=(const TPlainScene&) = delete;

private:
    static void Switch(GLint what, bool on) { (on ? gl2psEnable : gl2psDisable)(what); }

    QPointer<TZEPScene> m_scene;
    bool m_shadows, m_mirrors, m_manual;
};

/// What was written, as a file in memory.
class TMemoryFile {
public:
    TMemoryFile() : m_file(open_memstream(&m_data, &m_size)) {}
    ~TMemoryFile() {
        Close();
        std::free(m_data);
    }
    TMemoryFile(const TMemoryFile&) = delete;
    TMemoryFile& operator=(const TMemoryFile&) = delete;

    [[nodiscard]] FILE* Stream() const { return m_file; }
    [[nodiscard]] QByteArray Content() {
        Close();
        return {m_data, static_cast<qsizetype>(m_size)};
    }

private:
    void Close() {
        if (m_file) std::fclose(m_file);
        m_file = nullptr;
    }

    char* m_data = nullptr;
    std::size_t m_size = 0;
    FILE* m_file;
};

struct TPage {
    QSize Size;
    GLint Format;
    GLint Options;
};

/// \return  of GL2PS
GLint DrawPage(TZEPPanel& panel, const TPage& page, GLint buffer, FILE* file) {
    GLint viewport[4] = {0, 0, page.Size.width(), page.Size.height()};
    const GLint sort = buffer == FirstBuffer ? GL2PS_BSP_SORT : GL2PS_SIMPLE_SORT;
    gl2psBeginPage("", "ZEP", viewport, page.Format, sort, page.Options, GL_RGBA, 0, nullptr, 0, 0,
                   0, buffer, file, "");
    gl2psDisable(GL2PS_BLEND);
    const auto end = qScopeGuard([] { glRenderMode(GL_RENDER); });
    panel.Render(page.Size.width(), page.Size.height(), false);
    return gl2psEndPage();
}

QByteArray Draw(TZEPPanel& panel, const TPage& page) {
    for (GLint buffer = FirstBuffer; buffer <= LargestBuffer; buffer *= 4) {
        TMemoryFile file;
        const GLint result = DrawPage(panel, page, buffer, file.Stream());
        if (result == GL2PS_SUCCESS || result == GL2PS_NO_FEEDBACK) return file.Content();
        if (result != GL2PS_OVERFLOW) break;
    }
    throw Exception(QStringLiteral("There is too much in this view for a picture of lines and "
                                   "areas: a PNG holds it."));
}

} // namespace

bool HasVectorPictures() {
    return true;
}

QByteArray RenderVectors(TZEPPanel& panel, const QSize& size, TZEPVectorFormat format,
                         bool transparent) {
    // A window and its context.
    if (size.isEmpty() || panel.RenderToCanvas({1, 1}).isNull()) return {};
    TZEPContext& context = *panel.Context();
    panel.MakeCurrent();
    const auto done = qScopeGuard([&] { panel.DoneCurrent(); });
    const int most = context.MaxViewportSize();
    if (size.width() > most || size.height() > most || !context.BeginPicture(16, 16))
        throw TUserError(
            QStringLiteral("RenderVectors: %1 by %2 is too large")
                .arg(size.width())
                .arg(size.height()),
            QStringLiteral("A picture of lines and areas has at most %1 pixels a side: choose a "
                           "smaller one.")
                .arg(most));
    const auto end = qScopeGuard([&] {
        context.EndPicture();
        glViewport(0, 0, panel.Width(), panel.Height());
    });
    glViewport(0, 0, size.width(), size.height());
    if (!panel.Camera() || !panel.Camera()->Scene()) return {};
    const TPlainScene plain(*panel.Camera()->Scene());
    const GLint background = transparent ? GL2PS_NONE : GL2PS_DRAW_BACKGROUND;
    return Draw(panel, {size, format == TZEPVectorFormat::Svg ? GL2PS_SVG : GL2PS_PDF,
                        background | GL2PS_SILENT | GL2PS_USE_CURRENT_VIEWPORT});
}

#else

bool HasVectorPictures() {
    return false;
}

QByteArray RenderVectors(TZEPPanel& /*panel*/, const QSize& /*size*/, TZEPVectorFormat /*format*/,
                         bool /*transparent*/) {
    throw Exception(QStringLiteral("Pictures of lines and areas need GL2PS, which this program was "
                                   "built without."));
}

#endif

} // namespace ZEP
