#include <zep/objects/Node.h>

namespace ZEP {

namespace {

const TRegisterObject<TZEPNode> RegisteredNode;

constexpr double Empty = 1000;

/// Widens the box by what `object` itself occupies. `matrix` leads from its frame to the box's.
void WidenBySize(const TZEPObject& object, const TGLMatrixd4& matrix, TGLArrayd3& min,
                 TGLArrayd3& max) {
    TGLArrayd3 low;
    TGLArrayd3 high;
    object.GetSize(low, high);
    for (unsigned corner = 0; corner < 8; ++corner) {
        TGLArrayd3 point{(corner & 1U ? high : low)[0], (corner & 2U ? high : low)[1],
                         (corner & 4U ? high : low)[2]};
        Xformd(matrix, point);
        MinBoundsd(min, point);
        MaxBoundsd(max, point);
    }
}

void WidenByChildren(const TZEPObject& parent, const TGLMatrixd4& matrix, TGLArrayd3& min,
                     TGLArrayd3& max) {
    for (int i = 0; i < parent.GetItemsCount(); ++i) {
        const TZEPObject& child = *parent.GetItem(i);
        TGLMatrixd4 toBox;
        MultMatrixd(matrix, child.GetMatrix(), toBox);
        // A node occupies what it contains, which comes with its children.
        if (!qobject_cast<const TZEPNode*>(&child)) WidenBySize(child, toBox, min, max);
        WidenByChildren(child, toBox, min, max);
    }
}

} // namespace

void TZEPNode::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = {Empty, Empty, Empty};
    max = {-Empty, -Empty, -Empty};
    WidenByChildren(*this, idd, min, max);
}

} // namespace ZEP
