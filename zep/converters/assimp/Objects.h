#pragma once

#include <zep/converters/Progress.h>
#include <zep/converters/assimp/Materials.h>
#include <zep/scene/Geom.h>

#include <QPointer>

#include <optional>

struct aiCamera;
struct aiLight;
struct aiMesh;
struct aiNode;

namespace ZEP {

class TReadBudget;
class TZEPObject;

/// What a model is read into, and who is told.
struct TAssimpTarget {
    TZEPObject& Root;
    int FirstMaterial; ///< number of the model's first material in the library; -1: there is none
    bool Turned;       ///< up is y in the model
    TReadBudget& Budget;
    TReadReport& Report;
    std::function<bool(double share)> Progress; ///< of the objects that are made; may be empty
};

/// Makes the objects of a model.
class TAssimpObjects {
public:
    /// Nodes below more than these stand beside the deepest.
    static constexpr int DeepestNode = 500;
    /// OpenGL shows eight, and each is numbered through all objects of the scene.
    static constexpr unsigned MaxLights = 256;

    TAssimpObjects(const aiScene& model, const TAssimpMaterials& materials, TAssimpTarget target)
        : m_model(model), m_materials(materials), m_target(std::move(target)) {}

    /// Raises `TReadingEnd` where the progress call has cancelled, `Exception` where the budget is
    /// spent.
    void Make();

private:
    /// A node that is to be read.
    struct TNode {
        const aiNode* Node;
        QPointer<TZEPObject> Parent;
        TGLMatrixd4 Frame; ///< of its parent
        int Depth;
    };

    void MakeNodes();
    [[nodiscard]] TNode Entered(const TNode& node);
    void MakeMesh(const aiMesh& mesh, const TNode& node);
    void MakeTriangles(const aiMesh& mesh, const TNode& node);
    void MakeLines(const aiMesh& mesh, const TNode& node);
    void MakePoints(const aiMesh& mesh, const TNode& node);
    void MakeCamera(const aiCamera& camera);
    void MakeLight(const aiLight& light);
    template <class T>
    T* Made(const QString& ident);
    void PlaceBelow(TZEPObject* object, TZEPObject* parent) const;
    void TakeBytes(std::size_t bytes) const;
    void TellProgress();
    [[nodiscard]] TGLMatrixd4 WholeFrame() const;
    [[nodiscard]] TColor ColorOf(const aiMesh& mesh, unsigned vertex) const;

    const aiScene& m_model;
    const TAssimpMaterials& m_materials;
    TAssimpTarget m_target;
    std::map<QString, TGLMatrixd4> m_frames; ///< of the nodes of cameras and lights, by their names
    std::size_t m_made = 0;                  // meshes
    qint64 m_strayNumbers = 0, m_coloredMeshes = 0;
};

} // namespace ZEP
