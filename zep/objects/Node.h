#pragma once

#include <zep/Export.h>
#include <zep/scene/ColoredObject.h>

namespace ZEP {

/// Groups objects under one transform; draws nothing itself.
class ZEP_CORE_EXPORT TZEPNode : public TZEPColoredObject {
    Q_OBJECT
public:
    using TZEPColoredObject::TZEPColoredObject;

    /// The box, in the node's own coordinates, of everything below it, as far as it widens the
    /// empty box: (1000, 1000, 1000) to (-1000, -1000, -1000), which a node without contents
    /// answers. Contents that lie beyond 1000 on one side of an axis are still inside.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    /// Nothing: its contents show their own boxes.
    void DrawSelection() override {}
};

} // namespace ZEP
