#pragma once

#include <zep/scene/Geom.h>

#include <QHash>

#include <memory>
#include <string_view>

namespace ZEP {

class TDXFRecord;
class TZEPXForm;

/// Texts of attributes, by the handles of their definitions.
using TDXFAttributeTexts = QHash<quint64, std::string_view>;

/// How a block is inserted: in the plane of `Extrusion`, scaled, turned, moved. The insertion may
/// be repeated in rows and columns, which turn with it but are not scaled.
struct TDXFInsertion {
    /// Of an entity INSERT.
    [[nodiscard]] static TDXFInsertion Of(const TDXFRecord& record);

    TGLArrayd3 Place{};
    TGLArrayd3 Scale{1, 1, 1};
    double Rotation = 0; ///< degrees
    TGLArrayd3 Extrusion{0, 0, 1};
    bool Hidden = false;
    bool OfDimension = false; ///< what a dimension shows
    int Columns = 1, Rows = 1;
    double ColumnDistance = 0, RowDistance = 0;
    std::shared_ptr<const TDXFAttributeTexts> Texts{}; ///< where no ATTRIB stands behind it

    /// From the first one to the one in that column and row, from 0.
    [[nodiscard]] TGLArrayd3 WayTo(int column, int row) const;
    /// The one in that column and row.
    [[nodiscard]] TDXFInsertion Single(int column, int row) const;
    /// Changes nothing of a block of that base point.
    [[nodiscard]] bool IsIdentity(const TGLArrayd3& base) const;
    void SetTransform(TZEPXForm& xform, const TGLArrayd3& base) const;

private:
    [[nodiscard]] TGLArrayd3 FlatWayTo(int column, int row) const;
};

} // namespace ZEP
