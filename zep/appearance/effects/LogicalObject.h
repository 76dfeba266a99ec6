#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>

namespace ZEP {

/// Shows its first two children as one solid: both together, what they have in common, or the
/// second without what lies in the first. Both should be closed; of a child that is not convex only
/// the nearest faces take part. Further children are not drawn.
///
/// A section (`TZEPSection`) leaves it whole, unless it shows both.
///
/// Clicks find the children. They do not take part in shadows, reflections of their own and the
/// transparent pass; where shadows are accumulated they are not drawn. Of logical objects within
/// one another the inner ones show both of their children.
///
/// The method is that of J. Goldfeather and others, "Near real-time CSG rendering using tree
/// normalization and geometric pruning", 1989, for two children; what stands before and behind
/// comes out of it as it went in.
///
/// Defaults: visible, both together.
class ZEP_CORE_EXPORT TZEPLogicalObject : public TZEPObject {
    Q_OBJECT
    Q_PROPERTY(bool Visible READ Visible WRITE SetVisible)
    Q_CLASSINFO("Visible", "true")
    Q_PROPERTY(TZEPLogicalOperation Operation READ Operation WRITE SetOperation)
public:
    enum TZEPLogicalOperation {
        loOR,  ///< both
        loAND, ///< what is in both
        loSUB  ///< the second without the first
    };
    Q_ENUM(TZEPLogicalOperation)

    using TZEPObject::TZEPObject;

    [[nodiscard]] TZEPLogicalOperation Operation() const { return m_operation; }
    void SetOperation(TZEPLogicalOperation operation);

    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;

protected:
    [[nodiscard]] TZEPPassSet SidePasses() const override {
        return PassBit(dsPre) | PassBit(dsPost);
    }

private:
    class TCarving;

    void DrawLogical(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind);

    TZEPLogicalOperation m_operation = loOR;
};

using TZEPLogicalOperation = TZEPLogicalObject::TZEPLogicalOperation;
using enum TZEPLogicalObject::TZEPLogicalOperation;

} // namespace ZEP
