#pragma once

#include <zep/Export.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Object.h>
#include <zep/scene/SceneInterfaces.h>

#include <QBasicTimer>
#include <QPointer>

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

namespace ZEP {

class TZEPMaterialLibrary;
class TZEPSelectHits;
enum class TZEPReach;
struct TZEPPickRegion;

/// Root of a tree of objects: it chooses the passes of a frame and their order, sets the OpenGL
/// state that spans a whole pass, and asks the panels that show it to repaint.
///
/// Defaults: black background, scene ambient colour 0x333333, selection enabled, everything else
/// off.
class ZEP_CORE_EXPORT TZEPScene : public TZEPObject, public TZEPSceneContext {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/appearance/materials/MaterialLibrary.h")
    Q_PROPERTY(ZEP::TColor BackgroundColor READ BackgroundColor WRITE SetBackgroundColor)
    Q_CLASSINFO("BackgroundColor", "0")
    Q_PROPERTY(ZEP::TColor SceneAmbientColor READ SceneAmbientColor WRITE SetSceneAmbientColor)
    Q_CLASSINFO("SceneAmbientColor", "0x333333")
    Q_PROPERTY(
        ZEP::TZEPMaterialLibrary* MaterialLibrary READ MaterialLibrary WRITE SetMaterialLibrary)
    Q_PROPERTY(bool ManualUpdate READ ManualUpdate WRITE SetManualUpdate)
    Q_PROPERTY(bool SelectionEnabled READ SelectionEnabled WRITE SetSelectionEnabled)
    Q_PROPERTY(bool LimitCameraMovement READ LimitCameraMovement WRITE SetLimitCameraMovement)
    Q_PROPERTY(bool QuickMouse READ QuickMouse WRITE SetQuickMouse)
    Q_CLASSINFO("QuickMouse", "false")
    Q_PROPERTY(bool Animation READ Animation WRITE SetAnimation)
    Q_CLASSINFO("Animation", "false")
    Q_PROPERTY(bool Shadows READ Shadows WRITE SetFShadows)
    Q_CLASSINFO("Shadows", "false")
    Q_PROPERTY(bool AccumShadows READ AccumShadows WRITE SetAccumShadows)
    Q_CLASSINFO("AccumShadows", "false")
    Q_PROPERTY(bool Reflections READ Reflections WRITE SetReflections)
    Q_CLASSINFO("Reflections", "false")
    Q_PROPERTY(bool ManualDepthCheck READ ManualDepthCheck WRITE SetManualDepthCheck)
    Q_CLASSINFO("ManualDepthCheck", "false")
    Q_PROPERTY(bool QuickDraw READ QuickDrawEnabled WRITE SetQuickDraw)
    Q_CLASSINFO("QuickDraw", "false")
    Q_PROPERTY(bool FirstPasses READ FirstPasses WRITE SetFirstPasses)
    Q_CLASSINFO("FirstPasses", "false")
public:
    explicit TZEPScene(TComponent* owner = nullptr);
    ~TZEPScene() override;

    [[nodiscard]] TColor BackgroundColor() const { return m_backgroundColor; }
    void SetBackgroundColor(TColor color);
    [[nodiscard]] TColor SceneAmbientColor() const { return m_sceneAmbientColor; }
    /// The light that reaches everything without a source (`GL_LIGHT_MODEL_AMBIENT`).
    void SetSceneAmbientColor(TColor color);
    [[nodiscard]] TZEPMaterialLibrary* MaterialLibrary() const { return m_materialLibrary; }
    /// Materials that objects choose by index; any change of one invalidates the scene. A library
    /// that the scene owns is saved with it, and what is loaded takes its place; of any other the
    /// name is saved.
    void SetMaterialLibrary(TZEPMaterialLibrary* library);
    void SaveToWriter(TWriter& writer) override;
    void LoadFromReader(TReader& reader) override;
    void GetChildren(const std::function<void(TComponent*)>& proc, TComponent* root) override;
    /// Changes no longer repaint by themselves.
    void SetManualUpdate(bool manual) { m_manualUpdate = manual; }
    void SetSelectionEnabled(bool enabled) { m_selectionEnabled = enabled; }
    /// Keeps an orbiting camera above the horizon and off the pole.
    void SetLimitCameraMovement(bool limit) { m_limitCameraMovement = limit; }
    /// Panels draw drafts while a mouse button is held.
    void SetQuickMouse(bool quick);
    [[nodiscard]] bool Animation() const { return m_animation; }
    /// Ticks every 40 ms: `Action` with the time in seconds, then a repaint of every panel. What
    /// changed since the last tick is painted when it ends. While designing only the flag is kept.
    /// Raises `Exception` where no timer is to be had.
    void SetAnimation(bool animation);
    void SetFShadows(bool shadows);
    /// Shadows by averaged images in the accumulation buffer instead of by subtraction.
    void SetAccumShadows(bool accumulate);
    void SetReflections(bool reflections);
    [[nodiscard]] bool ManualDepthCheck() const { return m_manualDepthCheck; }
    /// Selection prefers what is near the eye over what is near in the depth buffer.
    void SetManualDepthCheck(bool check) { m_manualDepthCheck = check; }
    /// Only top-level objects, user objects and lights draw themselves.
    [[nodiscard]] bool QuickDrawEnabled() const { return m_quickDraw; }
    void SetQuickDraw(bool quick) { m_quickDraw = quick; }
    [[nodiscard]] bool FirstPasses() const { return m_firstPasses; }
    /// Each frame begins, after `AfterCamera`, with the passes `dsPre` and `dsReflections`: the
    /// shadow volumes of the last frame go, and mirrors get what they show. Without it a host that
    /// wants moving shadows or mirrors draws these two itself, in `AfterCamera`.
    void SetFirstPasses(bool draw);

    /// Draws one frame into the current context; nothing while an update bracket is open or
    /// without a camera. A view that cuts the scene open shows no shadows. Shadows need a stencil
    /// buffer, and one of the two methods: where the context cannot do what was chosen, the other
    /// one stands in for it. What an object throws leaves OpenGL's state as it was between two
    /// passes. What is drawn may free others, also the camera and the scene, with which the frame
    /// ends. \param width, height  size of the view in device pixels \param draft outlines, and no
    /// shadows
    void Render(TZEPSceneCamera* camera, int width, int height, bool draft);
    /// Of the last frame; null once it is gone.
    [[nodiscard]] TZEPSceneCamera* CurrentCamera() const { return m_currentCamera; }
    /// Draws the tree for one pass between what the pass sets and takes back.
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;
    /// The camera's modelview matrix at the start of the last reflection or shadow-volume pass.
    [[nodiscard]] const TGLMatrixd4& SavedModelView() const { return m_savedModelView; }
    /// A light built its shadow volumes in this frame.
    void CountShadowLight() { ++m_shadowLights; }
    [[nodiscard]] int ShadowLightCount() const { return m_shadowLights; }

    /// \name Selection
    /// The region is a part of the current viewport, in device pixels about (x, y) counted from the
    /// lower left corner, at least 1 by 1; a context is current.
    /// @{
    /// Selects what is hit. A region of exactly 4 by 4 pixels is a point: the best hit alone, by
    /// depth or as `ManualDepthCheck` has it, is selected. Any other region is a rectangle: all
    /// that is hit is selected. With `SelectionEnabled` off everything is deselected.
    /// \param processHits  false only counts
    /// \param toggle       of a point: what is selected is deselected
    /// \param clearFirst   everything is deselected before
    /// \return the number of OpenGL's hit records
    int Select(TZEPSceneCamera* camera, int viewWidth, int viewHeight, int x, int y, int pickWidth,
               int pickHeight, bool processHits, bool toggle, bool clearFirst);
    /// The best hit among the pickable objects of at most that pick level; null for none. Nothing
    /// changes.
    [[nodiscard]] TZEPObject* Pick(TZEPSceneCamera* camera, int viewWidth, int viewHeight, int x,
                                   int y, int pickWidth, int pickHeight, int level);
    /// The selectable objects that are found in a region (zep/scene/SelectHits.h). Nothing changes.
    [[nodiscard]] std::vector<TZEPObject*> ObjectsIn(TZEPSceneCamera& camera,
                                                     const TZEPPickRegion& region, TZEPReach reach);
    /// Of what is nearest in a region: 0 at the near plane, 1 at the far one; none where nothing
    /// is.
    [[nodiscard]] std::optional<double> DepthIn(TZEPSceneCamera& camera,
                                                const TZEPPickRegion& region);
    /// Selects these. \param clearFirst  everything else is deselected before
    void SelectObjects(const std::vector<TZEPObject*>& objects, bool clearFirst);
    /// From the eye to the nearest corner of the object's absolute box.
    [[nodiscard]] double GetObjectDistance(TZEPSceneCamera* camera, TZEPObject* object) const;
    void DeselectAll();
    /// @}

    void RegisterGLPanel(TZEPScenePanel* panel);
    void UnregisterGLPanel(TZEPScenePanel* panel);
    /// Asks every panel to repaint, unless the animation does so anyway.
    void Invalidate(TObject* sender) override;
    [[nodiscard]] bool WantsInvalidation() const override { return !m_manualUpdate; }

    [[nodiscard]] TZEPObject* AsObject() override { return this; }
    [[nodiscard]] TZEPMaterial* LibraryMaterial(int index) const override;
    [[nodiscard]] GLuint SelectName(TZEPObject* object) override;
    void SelectionChanging(TZEPObject* object) override { Q_EMIT BeforeSelect(object); }
    void SelectionChanged(TZEPObject* object) override { Q_EMIT AfterSelect(object); }

Q_SIGNALS:
    /// Around each change of an object's selection.
    void BeforeSelect(ZEP::TZEPObject* object);
    void AfterSelect(ZEP::TZEPObject* object);
    /// In `Render`, after the buffers are cleared and the camera is applied: the place to draw
    /// passes of one's own.
    void AfterCamera(ZEP::TZEPScene* scene);

protected:
    [[nodiscard]] TZEPSceneContext* SceneOfChildren() override { return this; }
    void Notification(TComponent* component, TOperation operation) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void ClearBuffers() const;
    class TState;
    [[nodiscard]] bool DrawsShadows() const;
    void DrawSheet(TZEPDrawState state, TZEPDrawKind kind);
    void DrawStates(std::initializer_list<TZEPDrawState> states, TZEPDrawKind kind);
    void DrawShadowedStates();
    [[nodiscard]] bool EnterState(TZEPDrawState state);
    void LeaveState(TZEPDrawState state);
    [[nodiscard]] bool EnterShadowVolumes();
    void LeaveShadowVolumes();
    void SetAmbient(const TGLColor& color) const;
    [[nodiscard]] std::optional<TZEPSelectHits> FindHits(TZEPSceneCamera& camera,
                                                         const TZEPPickRegion& region,
                                                         const std::function<void()>& draw = {});
    [[nodiscard]] int DrawInSelectMode(const std::function<void()>& draw);
    void DrawEach(const std::vector<QPointer<TZEPObject>>& objects, const TGLMatrixd4& view);
    void KeepInside(TZEPSceneCamera& camera, const TZEPPickRegion& region,
                    std::vector<QPointer<TZEPObject>>& objects);
    void GrowSelectBuffer(int overflows);
    [[nodiscard]] TZEPObject* BestOf(const TZEPSelectHits& hits, TZEPSceneCamera* camera,
                                     std::optional<int> level) const;
    void Store(bool& flag, bool value);
    explicit TZEPScene(TComponent* owner, std::shared_ptr<TZEPFrame> frame);
    void SetCurrentCamera(TZEPSceneCamera* camera);
    [[nodiscard]] TZEPMaterialLibrary* OwnLibrary() const;

    std::shared_ptr<TZEPFrame> m_frame; ///< may outlive the scene while it draws
    std::vector<TZEPScenePanel*> m_panels;
    std::vector<TZEPObject*> m_selectNames;              ///< of the last draw in select mode
    std::shared_ptr<std::vector<GLuint>> m_selectBuffer; ///< grows by 500, never shrinks
    TZEPMaterialLibrary* m_materialLibrary = nullptr;
    TZEPSceneCamera* m_currentCamera = nullptr;
    TComponent* m_currentCameraObject = nullptr; ///< which tells when it goes
    TGLMatrixd4 m_savedModelView = idd;
    QBasicTimer m_timer;
    TColor m_backgroundColor = clBlack;
    TColor m_sceneAmbientColor{0x333333};
    int m_shadowLights = 0;
    bool m_darkFog = false; ///< fog adds nothing while light is subtracted
    bool m_animation = false;
    bool m_tickRepaints = false; ///< a change waits for the next tick of the animation
    bool m_manualDepthCheck = false;
    bool m_firstPasses = false;
    bool m_selectsNear = false; ///< a draw in select mode passes over what is out of view
};

} // namespace ZEP
