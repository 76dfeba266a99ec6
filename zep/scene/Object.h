#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/framework/CompactText.h>
#include <zep/framework/Component.h>
#include <zep/scene/ChildNews.h>
#include <zep/scene/DrawPasses.h>
#include <zep/scene/Geom.h>

#include <GL/gl.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace ZEP {

enum class TStreamForm;
template <class Child>
class TZEPChildList;
class TZEPMaterial;
class TZEPObject;
class TZEPScene;
class TZEPSceneContext;
class TZEPVertex3;
class TZEPWatch;
class TZEPXForm;
struct TZEPBlockBox;
struct TZEPFrame;

/// A listener to changes of a tree: a call with its own context. `data` points to what the action
/// is about: for `saMove` the new index (`const int*`), for `saRename` the old name
/// (`const QString*`), for `saInsert` and `saRemove` the parent (`TZEPObject* const*`).
struct TZEPObjectNotify {
    using Call = void (*)(void* context, TZEPObject* sender, TZEPObjectAction action,
                          const void* data);
    Call Code = nullptr;
    void* Context = nullptr;
    bool operator==(const TZEPObjectNotify&) const = default;
};

/// Called for each object of an iteration.
using TIterateProc = void (*)(TZEPObject* object, void* data);

/// Node of the scene graph. It is a component with an owner and a name, and apart from that has a
/// place in a tree: a parent, ordered children, and the scene of the tree. It carries a transform,
/// bounds, and the conversions between its own frame and the scene's ("absolute") frame; lengths
/// are in the scene's unit, angles in degrees.
///
/// Material, transform and the vectors come into being when they are first asked for: a scene may
/// hold a million objects.
///
/// Defaults: colour clSilver, visible, not selected, `dtFill`, own material, unit scale.
class ZEP_CORE_EXPORT TZEPObject : public TComponent {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/XForm.h")
    Q_PROPERTY(QString Ident READ Ident WRITE SetIdent)
    Q_PROPERTY(ZEP::TZEPXForm* XForm READ XForm)
public:
    explicit TZEPObject(TComponent* owner = nullptr);
    ~TZEPObject() override;

    /// Objects that exist in the process; reported as a leak when the library is unloaded.
    [[nodiscard]] static int LiveObjects();

    /// \name Identity
    /// @{
    [[nodiscard]] QString Ident() const { return m_ident.ToString(); }
    /// A free identifier, compared without case by `ItemByIdent`.
    void SetIdent(QAnyStringView ident) { m_ident.Set(ident); }
    /// Renames and raises `saRename`.
    void SetName(const QString& name) override;
    /// Copies ident, colour, visibility, selection, draw settings and the vectors of another
    /// object; children, transform and material stay. Raises `Exception` for any other source.
    void Assign(const TComponent* source) override;
    /// @}

    /// \name Tree
    /// @{
    [[nodiscard]] TZEPObject* Parent() const { return m_parent; }
    /// The scene of the tree, null outside of one.
    [[nodiscard]] TZEPScene* Scene() const;
    [[nodiscard]] int GetItemsCount() const;
    /// Child `index`; raises `Exception` ("List index out of bounds") outside the range.
    [[nodiscard]] TZEPObject* GetItem(int index) const;
    /// Position among the parent's children; 0 without a parent.
    [[nodiscard]] int GetItemIndex() const;
    /// Moves to position `index` (clamped to the list) and raises `saMove` if that is a move.
    void SetItemIndex(int index);
    /// First direct child of that ident, compared without case; null if there is none.
    [[nodiscard]] TZEPObject* ItemByIdent(const QString& ident) const;
    /// Puts the ancestors before the entries of `list`, root first.
    void ListParents(std::vector<TZEPObject*>& list) const;
    /// Appends the descendants, each after its own descendants; with `classes` only those that
    /// are of one of the classes or inherit it.
    void ListChildren(std::vector<TZEPObject*>& list,
                      const std::vector<const QMetaObject*>& classes = {}) const;
    /// Calls `proc` for this object, then for its descendants, parents first.
    void Iterate(TIterateProc proc, void* data);
    void IterateOnChildren(TIterateProc proc, void* data);
    /// Leaves the old parent, joins the new one (null: none) at the end or the start of its
    /// children, and brings the whole subtree into its scene. Raises `saRemove`, `saInsert`; what a
    /// listener does with the object in between holds. Does nothing when that would make an object
    /// its own ancestor, and with one that is being freed. Raises `Exception` where the tree would
    /// be deeper than `DeepestNesting`.
    virtual void SetParentComponentExt(TComponent* parent, bool append);
    void SetParentComponent(TComponent* parent) override { SetParentComponentExt(parent, true); }
    [[nodiscard]] TComponent* GetParentComponent() const override { return m_parent; }
    [[nodiscard]] bool HasParent() const override { return m_parent != nullptr; }
    void GetChildren(const std::function<void(TComponent*)>& proc, TComponent* root) override;
    /// Frees the children, last one first.
    virtual void Clear();
    /// A tick of the animation: time in seconds. Passed to the children.
    virtual void Action(double time);
    /// @}

    /// \name Storage of this object and its subtree
    /// @{
    virtual void SaveToWriter(TWriter& writer);
    /// Replaces children and stored properties; name, parent, scene and listeners stay. Invalidates
    /// once. Properties and classes that are not known and values that do not fit are passed over.
    /// Where the structure is broken it raises `TStreamError`, and where its levels are more than
    /// `DeepestNesting` has room for below this object, `Exception`; the object then stays as it
    /// was but for an open update bracket, which `EndUpdate(true)` closes.
    virtual void LoadFromReader(TReader& reader);
    /// The binary form. An old file of that name stands until the new one is whole. Raises
    /// `Exception` naming the file.
    virtual void SaveToFile(const QString& fileName);
    /// Raises `Exception` naming the file; where that cannot be read, nothing has changed.
    virtual void LoadFromFile(const QString& fileName);
    /// The same in text form.
    virtual void SaveToTextFile(const QString& fileName);
    virtual void LoadFromTextFile(const QString& fileName);
    /// Passes a fault of a stream over. \param message what is wrong, with its place
    virtual void OnReadError(TReader& reader, const QString& message, bool& handled);
    /// Before reading, the vectors of the transform and the tiling of the material's texture become
    /// zero, which a stream does not hold.
    void ReadState(TReader& reader) override;
    void WriteState(TWriter& writer) override;
    /// @}

    /// \name Notification
    /// @{
    /// Adds a listener to changes here and below; a listener already there is not added again.
    void RegisterNotify(const TZEPObjectNotify& listener);
    void UnregisterNotify(const TZEPObjectNotify& listener);
    /// Tells the parents' listeners from the root down, then the own ones. A listener may do as it
    /// likes with others and with the tree; once the sender is gone the rest is not told.
    void DoNotify(TZEPObject* sender, TZEPObjectAction action, const void* data);
    /// Holds back invalidation until the matching `EndUpdate`.
    virtual void BeginUpdate();
    /// \param reset  ends all open brackets at once
    virtual void EndUpdate(bool reset = false);
    [[nodiscard]] int UpdateLevel() const { return m_extras ? m_extras->UpdateLevel : 0; }
    /// Climbs to the scene, which asks its panels to repaint; stopped by an update bracket and by
    /// the scene's `ManualUpdate`. Descendants call the inherited operation.
    void Invalidate(TObject* sender) override;
    [[nodiscard]] bool WantsInvalidation() const override;
    /// Changes exactly when the transform of this object or of an ancestor has changed since the
    /// last call, or it stands elsewhere in a tree.
    int GetChangeIndex();
    /// What has happened to the children since the last call, however scene and brackets hold back
    /// invalidation: for the one who keeps what it made of them.
    [[nodiscard]] TZEPChildNews TakeChildNews();
    /// @}

    /// \name Appearance (published by the descendants that draw)
    /// @{
    [[nodiscard]] TColor Color() const { return GetColor(); }
    [[nodiscard]] virtual TColor GetColor() const { return m_color; }
    /// Also gives both faces of the material this ambient and diffuse colour. Does not invalidate.
    virtual void SetColor(TColor color);
    /// The object's own material, made when first asked for.
    [[nodiscard]] TZEPMaterial* Material();
    [[nodiscard]] bool HasOwnMaterial() const { return ExistingMaterial() != nullptr; }
    [[nodiscard]] int MaterialIndex() const { return m_materialIndex; }
    /// Number of a material in the scene's library; outside of it the own material is used.
    virtual void SetMaterialIndex(int index);
    [[nodiscard]] bool Visible() const { return m_visible; }
    virtual void SetVisible(bool visible);
    [[nodiscard]] bool Selected() const { return m_selected; }
    /// Fires the scene's events; stays false unless the object is selectable and the scene allows
    /// selection.
    virtual void SetSelected(bool selected);
    [[nodiscard]] bool Selectable() const { return m_selectable; }
    void SetSelectable(bool selectable) { m_selectable = selectable; }
    [[nodiscard]] TZEPDrawType DrawType() const { return static_cast<TZEPDrawType>(m_drawType); }
    virtual void SetDrawType(TZEPDrawType type);
    [[nodiscard]] bool Smooth() const { return m_smooth; }
    virtual void SetSmooth(bool smooth);
    /// Flag 0: casts shadows, flag 1: receives them; any other index is ignored.
    virtual void SetShadows(int index, bool value);
    [[nodiscard]] bool CastsShadows() const { return m_castsShadows; }
    [[nodiscard]] bool ReceivesShadows() const { return m_receivesShadows; }
    /// May be found by picking; picked up to this level; preferred with a higher priority.
    [[nodiscard]] bool Pickable() const { return m_pickable; }
    void SetPickable(bool pickable) { m_pickable = pickable; }
    [[nodiscard]] int PickLevel() const { return m_extras ? m_extras->PickLevel : 0; }
    void SetPickLevel(int level);
    [[nodiscard]] int SelectPriority() const { return m_extras ? m_extras->SelectPriority : 0; }
    void SetSelectPriority(int priority);
    /// @}

    /// \name Bounds and frames
    /// @{
    /// The transform, made when first asked for.
    [[nodiscard]] TZEPXForm* XForm();
    /// The transform where one exists; null stands for the identity.
    [[nodiscard]] const TZEPXForm* ExistingXForm() const { return m_xform.get(); }
    /// Recomputes bounds that a descendant keeps; the unit box needs no keeping.
    virtual void UpdateSize() {}
    /// Local box of the object itself, children left out; the unit box about the origin here.
    virtual void GetSize(TGLArrayd3& min, TGLArrayd3& max) const;
    [[nodiscard]] virtual TGLArrayd3 GetMin() const;
    [[nodiscard]] virtual TGLArrayd3 GetMax() const;
    void GetMin3Real(double& x, double& y, double& z) const;
    void GetMax3Real(double& x, double& y, double& z) const;
    [[nodiscard]] virtual TGLArrayd3 GetCenter() const { return zero3d; }
    [[nodiscard]] virtual double GetRadius() const { return 0.5; }
    /// From the own frame to the parent's.
    [[nodiscard]] virtual TGLMatrixd4 GetMatrix() const;
    /// From the own frame to the absolute one.
    [[nodiscard]] virtual TGLMatrixd4 GetAbsoluteMatrix() const;
    virtual void ConvertToAbsolute(const TGLArrayd3& point, TGLArrayd3& result) const;
    void ConvertToAbsolute3Real(double x, double y, double z, double& rx, double& ry,
                                double& rz) const;
    /// Correct only where all transforms on the path are rigid.
    void ConvertToLocal3Real(double x, double y, double z, double& rx, double& ry,
                             double& rz) const;
    /// Axis-aligned box of the transformed corners of `GetSize`.
    virtual void GetAbsoluteSize(TGLArrayd3& min, TGLArrayd3& max) const;
    [[nodiscard]] virtual TGLArrayd3 GetAbsoluteMin() const;
    [[nodiscard]] virtual TGLArrayd3 GetAbsoluteMax() const;
    void GetAbsoluteMin3Real(double& x, double& y, double& z) const;
    void GetAbsoluteMax3Real(double& x, double& y, double& z) const;
    [[nodiscard]] virtual TGLArrayd3 GetAbsoluteCenter() const;
    void GetAbsoluteCenter3Real(double& x, double& y, double& z) const;
    void GetBoundingBoxAbsoluteCenter3Real(double& x, double& y, double& z) const;
    /// Half the diagonal of the absolute box.
    [[nodiscard]] virtual double GetAbsoluteRadius() const;
    /// @}

    /// \name Drawing
    /// @{
    /// Draws this object and its children for one pass: pushes the transform, calls the hook of
    /// the pass, passes it on. An invisible object hides its whole subtree.
    virtual void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind);
    virtual void DrawChildren(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind);
    /// Draws this object alone once, if visible.
    virtual void QuickDraw();
    /// Box of `GetSize` in white: stippled edges and corner points.
    virtual void DrawSelection();
    /// The geometry itself. \param face GL_FRONT, GL_BACK or GL_FRONT_AND_BACK \param draft outline
    virtual void DrawSpecific(GLenum face, bool draft);
    virtual void DrawPre() {}
    virtual void DrawLight(bool shadowed) { static_cast<void>(shadowed); }
    virtual void DrawMain(bool draft);
    virtual void DrawTransparent(bool draft);
    virtual void DrawReflections() {}
    virtual void BuildShadowVolumes() {}
    virtual void DrawShadowVolumes() {}
    virtual void DrawShadows(bool draft) { static_cast<void>(draft); }
    virtual void DrawPost() {}
    /// What it is full of, where all that `DrawSpecific` draws is the surface of a body without
    /// gaps within `GetSize`: a section (`TZEPSection`) shows that. Null, as here: it is hollow or
    /// open.
    [[nodiscard]] virtual TZEPMaterial* SolidMaterial() { return nullptr; }
    /// The passes in which it may have something to draw itself: those that draw the objects, and
    /// what its class tells; all of them for a class not registered by `TRegisterObject`.
    [[nodiscard]] TZEPPassSet Passes() const;
    /// Nothing of what it draws itself is transparent, as far as its class can tell.
    [[nodiscard]] bool IsKnownOpaque() const;
    /// @}

protected:
    [[nodiscard]] TZEPSceneContext* SceneContext() const { return m_scene; }
    /// Of the scene that draws this object.
    [[nodiscard]] TZEPFrame& DrawFrame() const;
    /// The scene that children of this object belong to.
    [[nodiscard]] virtual TZEPSceneContext* SceneOfChildren() { return m_scene; }
    /// This object has come to another scene, or to none.
    virtual void EnteredScene() {}
    /// It, or an ancestor, has another place among its siblings.
    virtual void Reordered() {}
    /// Draws itself also below the top level when the scene draws quickly.
    [[nodiscard]] virtual bool DrawsInQuickDraw() const { return false; }
    /// Draws `object` itself, without its children, for one pass. What the pass asks of the flags
    /// of an object is asked of `flags`.
    static void DrawOwn(TZEPObject& object, const TZEPObject& flags, TZEPSceneContext& scene,
                        TZEPDrawState state, TZEPDrawKind kind);
    /// The passes in which it has something to do as it is now, those apart that draw the objects
    /// themselves; what changes the answer calls `Invalidate`. Neighbours that have nothing to do
    /// in a pass are passed over. Only classes registered by `TRegisterObject` are asked: a class
    /// that overrides `DrawPre`, `DrawLight`, `DrawReflections`, `BuildShadowVolumes`,
    /// `DrawShadowVolumes`, `DrawShadows` or `DrawPost` answers for those.
    [[nodiscard]] virtual TZEPPassSet SidePasses() const { return 0; }
    /// Its class can be believed what it tells of itself.
    [[nodiscard]] bool IsOfKnownClass() const { return TZEPKnownClass::Is(typeid(*this)); }
    /// Has something to draw in the transparent pass; what has not is passed over there. Asked as
    /// `SidePasses` is.
    [[nodiscard]] virtual bool DrawsTransparent() const { return true; }
    /// What it draws in the passes that draw the objects themselves, and in that of shadows on
    /// them, lies within `GetSize` in its own frame, apart from widths up to `WidestCulled`. Where
    /// that box is out of view, such an object is passed over there, unless it is selected; its
    /// children are looked at by themselves. What changes the answer or the box calls `Invalidate`.
    /// Asked as `SidePasses` is.
    [[nodiscard]] virtual bool StaysInSize() const { return false; }
    /// Its drawing leaves OpenGL's state as the material and line attributes set it, so that a
    /// neighbour with the same ones need not set them again (scene/DrawRun.h), and draws no other
    /// object. The library's classes answer for themselves alone, so that what a host derives from
    /// them does not take part until it says so.
    [[nodiscard]] virtual bool SharesDrawRun() const { return false; }

    /// \name Two vectors that descendants publish under their own names
    /// @{
    [[nodiscard]] TZEPVertex3* FirstVector() { return VectorAt(0); }
    [[nodiscard]] TZEPVertex3* SecondVector() { return VectorAt(1); }
    [[nodiscard]] const TGLArrayd3& FirstPoint() const { return VectorOr0(0); }
    [[nodiscard]] const TGLArrayd3& SecondPoint() const { return VectorOr0(1); }
    /// Vector 0 or 1, made when first asked for. A class of which each object needs one holds it.
    [[nodiscard]] virtual TZEPVertex3* VectorAt(int number);
    /// What that vector holds; null where it has not been made.
    [[nodiscard]] virtual const TGLArrayd3* VectorData(int number) const;
    /// @}

    /// A number 0 to 7 for the class's own use, which takes no memory; 0 at first.
    [[nodiscard]] unsigned ClassNumber() const { return m_classNumber; }
    void SetClassNumber(unsigned number) { m_classNumber = static_cast<std::uint8_t>(number & 7U); }

    /// Asked in an `Invalidate` with this object as the sender: it has another visibility,
    /// selection, draw type, material index or part in shadows, and is made of what it was.
    [[nodiscard]] bool IsOfLookAlone() const { return m_ofLookAlone; }
    /// What its neighbours' box and passes are is out of date; `Invalidate` does this, too.
    void ForgetBox();
    /// A change of `GetSize` or of the look must be told, by `Invalidate`, whatever else is held
    /// back.
    [[nodiscard]] bool HasKeptBox() const;
    /// Frees the children without raising anything.
    void FreeChildren();
    /// `SetSelected(false)` for all descendants that may be selected.
    void DeselectChildren();

    /// The own material where one exists.
    [[nodiscard]] TZEPMaterial* ExistingMaterial() const {
        return m_extras ? m_extras->Material.get() : nullptr;
    }
    /// The colour was set, so that the material's ambient and diffuse colours follow it.
    [[nodiscard]] bool HasOwnColor() const { return m_hasOwnColor; }
    /// Drawn as a smooth line: the own material has the tiny transparency that sends it there.
    [[nodiscard]] bool HasLineTransparency() const { return m_lineTransparency; }
    void SetLineTransparency();

private:
    friend class TZEPChildList<TZEPObject>;

    /// What most objects never have.
    struct TExtras {
        TExtras();
        ~TExtras();
        TExtras(const TExtras&) = delete;
        TExtras& operator=(const TExtras&) = delete;
        [[nodiscard]] bool AreInitial() const;

        std::unique_ptr<TZEPMaterial> Material;
        std::unique_ptr<TZEPChildList<TZEPObject>> Children; // null: a leaf
        std::array<std::unique_ptr<TZEPVertex3>, 2> Vectors;
        std::vector<TZEPObjectNotify> Listeners;
        int UpdateLevel = 0;
        int ChangeIndex = 0;
        int TransformSnapshot = 0;
        int ParentSnapshot = 0;
        int PickLevel = 0;
        int SelectPriority = 0;
        int DepthBelow = 0; // levels of descendants, at most
    };

    TExtras& Extras();
    /// Null for a leaf.
    [[nodiscard]] TZEPChildList<TZEPObject>* Children() const {
        return m_extras ? m_extras->Children.get() : nullptr;
    }
    /// Of an object that has a parent.
    [[nodiscard]] TZEPChildList<TZEPObject>& Siblings() const {
        return *m_parent->m_extras->Children;
    }
    [[nodiscard]] int KeptDepthBelow() const { return m_extras ? m_extras->DepthBelow : 0; }
    [[nodiscard]] const TGLArrayd3& VectorOr0(int number) const;
    template <class Proc>
    void ForEachChild(Proc&& proc);
    void DrawPass(const TZEPObject& flags, TZEPSceneContext& scene, TZEPDrawState state,
                  TZEPDrawKind kind);
    void DrawForSelect(TZEPSceneContext& scene);
    /// Adds its box, in the parent's frame.
    void ExtendBox(TZEPBlockBox& box) const;
    /// As a child of the block: adds its box, and the passes that it or its children take part in.
    void Extend(TZEPBlockBox& box) const;
    [[nodiscard]] bool IsInView() const;
    /// Nothing of what it draws itself is seen in its own frame; its children may be.
    [[nodiscard]] bool IsOutOfView() const;
    [[nodiscard]] bool Climbs() const;
    bool LeaveParent();
    void Detach();
    void TellReordered();
    /// Not nested too deep there.
    [[nodiscard]] bool FitsBelow(const TZEPObject& parent);
    void Join(TZEPObject& parent, bool append);
    [[nodiscard]] bool IsWithin(const TZEPObject& other) const;
    [[nodiscard]] int Height() const;
    void CallListeners(const TZEPWatch& senderAlive, TZEPObject* sender, TZEPObjectAction action,
                       const void* data);
    void EnterScene(TZEPSceneContext* scene);
    void ReportListeners() const;
    [[nodiscard]] int TransformCounter() const;
    void SaveAs(const QString& fileName, TStreamForm form);
    void LoadAs(const QString& fileName, TStreamForm form);
    void InvalidateLook();
    void DropInitialTransform();
    void DropInitialMaterial();

    // Ordered to leave no gaps, the first ones behind the base's last: each of a million objects
    // pays for this.
    bool m_visible : 1 = true;
    bool m_selectable : 1 = true;
    bool m_selected : 1 = false;
    bool m_pickable : 1 = true;
    bool m_smooth : 1 = false;
    bool m_castsShadows : 1 = false;
    bool m_receivesShadows : 1 = false;
    bool m_hasOwnColor : 1 = false;
    bool m_lineTransparency : 1 = false;
    bool m_leaving : 1 = false;     // its listeners hear that it leaves its parent
    bool m_ofLookAlone : 1 = false; // what is being told now
    std::uint8_t m_drawType : 2 = dtFill;
    std::uint8_t m_classNumber : 3 = 0;
    TZEPObject* m_parent = nullptr;
    TZEPSceneContext* m_scene = nullptr;
    std::unique_ptr<TZEPXForm> m_xform;
    std::unique_ptr<TExtras> m_extras;
    TCompactText m_ident;
    TColor m_color = clSilver;
    int m_slot = 0; // place in the parent's child list
    int m_materialIndex = -1;
};

} // namespace ZEP
