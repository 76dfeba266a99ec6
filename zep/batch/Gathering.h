#pragma once

#include <zep/batch/Separates.h>
#include <zep/batch/Steps.h>
#include <zep/scene/ViewVolume.h>

#include <memory>

namespace ZEP {

struct TGroupParts;

/// Neighbours among the children of a group. They stand in one block, or are one group that is so
/// large that it has blocks of its own.
struct TPart {
    /// What an update has found out about it.
    struct TMarks {
        bool IsNew = false;   ///< it has no block yet
        bool IsStale = false; ///< it must be made anew
        bool Looks = false;   ///< some of its children look different
        bool Selects = false; ///< some were selected or deselected
    };

    int Children = 0;
    TMarks Marks{};
    std::unique_ptr<TGroupParts> Group; ///< null: a block
    TBatchObjects Groups;               ///< in the block, with all that they hold
    TBatchObjects Layers;               ///< groups that are left to others
    TBatchObjects Separates;            ///< that draw themselves and have children
    TBatchObjects Parents;              ///< those, and what has children below them
    TBatchObjects Selected;             ///< in the block, and below the parents

    [[nodiscard]] std::size_t BlockCount() const;
    void ListParents(TIsBatch isBatch);
    /// \param first  of its children in the group
    void ListSelected(const TZEPObject& group, int first);
};

using TParts = std::vector<TPart>;

/// A group and what its children make up, in order: there is always a part.
struct TGroupParts {
    QPointer<TZEPObject> Group;
    TGLMatrixd4 Matrix; ///< its own
    TGLMatrixd4 Frame;  ///< its children's
    TParts Parts;

    /// It is as it was, but for its children.
    [[nodiscard]] bool IsUnchanged() const;
    [[nodiscard]] std::size_t BlockCount() const;
};

/// By their number; those behind the last one are shown, and all are where there is none.
using THiddenChildren = std::shared_ptr<const std::vector<bool>>;

/// Looks at what stands below a layer and puts it into blocks: whatever is changed in one later on,
/// all of it is looked at again.
class TGathering {
public:
    /// An object that is gathered.
    struct TFound {
        TZEPObject* Object;
        std::uint32_t Frame, Block, Spot;
    };
    struct TBlock {
        TSeparates Shapes; ///< lines and points of their own kinds: no light falls on them
        TSeparates Others;
        std::size_t Gathered = 0; ///< objects
    };

    /// \param groups  what stands in groups, too
    /// \param hidden  children of `of` that are left out
    /// \param steps   told of each object; null: nobody is
    TGathering(bool groups, TIsBatch isBatch, const TZEPObject* of, THiddenChildren hidden,
               TSteps* steps)
        : m_groups(groups), m_isBatch(isBatch), m_of(of), m_hidden(std::move(hidden)),
          m_steps(steps) {}
    /// Neighbours among the children of a group. \return  at least one part
    [[nodiscard]] TParts Collect(TZEPObject& group, const TGLMatrixd4& frame, int first, int count);

    std::vector<TBlock> Blocks;
    std::vector<TFound> Found;
    std::vector<TZEPBlockBox> Boxes; ///< of those
    std::vector<TGLMatrixd4> Frames; ///< that they lie in

private:
    [[nodiscard]] bool Hides(const TZEPObject& group, int child) const;
    [[nodiscard]] bool IsLarge(const TZEPObject& object) const;
    [[nodiscard]] TPart Open(TZEPObject& group, const TGLMatrixd4& frame);
    TPart& StartPart(TParts& parts);
    std::uint32_t AddFrame(const TGLMatrixd4& frame);
    void Look(TZEPObject& object, std::uint32_t frame, TPart& part);
    void LookInto(TZEPObject& group, const TGLMatrixd4& frame, TPart& part);
    void Note(TZEPObject& object, std::uint32_t frame, TPart& part);

    bool m_groups;
    TIsBatch m_isBatch;
    const TZEPObject* m_of;
    THiddenChildren m_hidden;
    TSteps* m_steps;
    std::size_t m_weight = 0; ///< of the last block: vertexes, about
};

/// a · b.
[[nodiscard]] TGLMatrixd4 Product(const TGLMatrixd4& a, const TGLMatrixd4& b);
/// From the object's frame to the one that `frame` leads to.
[[nodiscard]] TGLMatrixd4 MatrixOf(const TZEPObject& object, const TGLMatrixd4& frame);

} // namespace ZEP
