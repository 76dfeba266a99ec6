#pragma once

#include <zep/converters/dxf/Entity.h>
#include <zep/framework/ReadBudget.h>
#include <zep/scene/Object.h>

#include <QHash>
#include <QPointer>

#include <unordered_map>

namespace ZEP {

class TDXFTextDecoder;

/// What the rules for layers depend on.
struct TDXFOptions {
    bool CreateLayers = true; ///< where an entity names one that is not there
    bool Extended = false;
    qint64 FreeBytes = TReadBudget::FreeBytes; ///< that a drawing of any size may make
    QString FileName{};                        ///< beside which others lie; empty: there are none
    QString LayerPrefix{};                     ///< of the names of layers
};

/// Where an entity goes, and how it looks there.
struct TDXFSpot {
    TZEPObject* Layer = nullptr; ///< null where it is not there
    TColor Color;
};

/// The layers of a drawing: children of the root, found by their ident without regard to case, the
/// first of several. Looking one up costs the same however many there are.
class TDXFLayers {
public:
    /// \param root  may go away meanwhile, with its children; then nothing more is asked here
    TDXFLayers(TZEPObject& root, const TDXFOptions& options, const TDXFTextDecoder& text);

    /// The layer of that name; null where there is none.
    TZEPObject* FindLayer(std::string_view name);
    /// The layer of that name, made where there is none; null where the host frees it at once.
    TZEPObject* Declare(std::string_view name);
    /// Makes a layer without a name for an entity whose layer is not there: the next entity of that
    /// layer does not find it.
    TZEPObject* MakeUnnamed(int colorNumber);

    /// \name For an entity of the plain reading that is read to its end
    /// What they answer holds until the next pair is taken: while the host is asked for progress,
    /// it may free any object.
    /// @{
    TDXFSpot Find(const TEntity& entity);
    /// A layer that is not there is made, without a name, if the options say so.
    TDXFSpot FindOrMake(const TEntity& entity);
    /// @}

private:
    TZEPObject* Make(const QString& ident);
    [[nodiscard]] QString IdentOf(std::string_view name) const;
    TZEPObject* LookUp(std::string_view name);
    [[nodiscard]] TDXFSpot SpotOn(TZEPObject* layer, const TEntity& entity) const;

    TZEPObject& m_root;
    TDXFOptions m_options;
    const TDXFTextDecoder& m_text;
    QHash<QString, QPointer<TZEPObject>> m_byIdent;                      // folded
    std::unordered_map<std::string_view, QPointer<TZEPObject>> m_byName; // as it stands in the text
    std::string_view m_lastName;
    QPointer<TZEPObject> m_lastLayer;
};

} // namespace ZEP
