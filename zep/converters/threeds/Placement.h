#pragma once

#include <zep/converters/threeds/Nodes.h>

#include <QPointer>

namespace ZEP {

class TZEPMesh;

/// Puts the points of meshes where the program of their file shows them. A file has them in the
/// whole's frame, but mirrored along x in their own where that is a mirrored one; and those of an
/// animation stand where the first key puts their own frame.
class TF3DSPlacement {
public:
    /// \param own  the mesh's own frame in the whole's, as the file has it
    void Add(TZEPMesh& mesh, const TGLMatrixd4& own);
    void Apply(const TF3DSNodes& nodes) const;

private:
    struct TPlaced {
        QPointer<TZEPMesh> Mesh;
        QString Name;
        TGLMatrixd4 Own;
    };

    std::vector<TPlaced> m_meshes;
};

} // namespace ZEP
