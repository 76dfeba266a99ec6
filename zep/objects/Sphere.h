#pragma once

#include <zep/Export.h>
#include <zep/objects/SharedLists.h>
#include <zep/objects/Solid.h>

namespace ZEP {

/// A sphere of diameter 1. Its drawing is kept in display lists, which spheres of the same settings
/// share.
///
/// Defaults: flat, 20 slices, 20 stacks.
class ZEP_CORE_EXPORT TZEPSphere : public TZEPSolid {
    Q_OBJECT
    Q_PROPERTY(bool Smooth READ Smooth WRITE SetSmooth)
    Q_CLASSINFO("Smooth", "false")
    Q_PROPERTY(int Slices READ Slices WRITE SetSlices)
    Q_CLASSINFO("Slices", "20")
    Q_PROPERTY(int Stacks READ Stacks WRITE SetStacks)
    Q_CLASSINFO("Stacks", "20")
public:
    using TZEPSolid::TZEPSolid;

    void SetSmooth(bool smooth) override;
    [[nodiscard]] int Slices() const { return m_slices; }
    /// Around the z axis; at most `MaxCells`, of which GLU draws 239. Below 2 nothing is drawn.
    void SetSlices(int slices);
    [[nodiscard]] int Stacks() const { return m_stacks; }
    /// Along the z axis; at most `MaxCells`, of which GLU draws 239. Below 1 nothing is drawn.
    void SetStacks(int stacks);

    void DrawSpecific(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override {
        return typeid(*this) == typeid(TZEPSphere);
    }

private:
    void SetCells(int& field, int count);

    int m_slices = 20;
    int m_stacks = 20;
    TSharedLists m_lists;
};

} // namespace ZEP
