#pragma once

#include <zep/converters/dxf/Blocks.h>
#include <zep/converters/dxf/Builder.h>

#include <QSet>

#include <optional>

namespace ZEP {

/// The extended reading of a drawing's layers, blocks and entities.
class TDXFExtendedReader {
public:
    explicit TDXFExtendedReader(TDXFDrawing& drawing);

    /// Reads the layer of the table whose code 0 was taken last.
    void ReadLayer();
    /// \name Read the table whose name was taken last
    /// @{
    void ReadLineTypes();
    void ReadTextStyles();
    /// @}
    /// \name Sections, whose name was taken last
    /// @{
    void ReadBlocks() { m_blocks.Read(m_drawing.Tags, m_drawing.Text); }
    void ReadEntities();
    /// @}

private:
    /// \param kind  of the records of a table
    template <class Add>
    void ReadTable(std::string_view kind, Add&& add);
    void ReadEntities(TDXFScope& scope, std::string_view end);
    void ReadEntity(TDXFScope& scope);
    void ReadInsert(TDXFScope& scope);
    void ReadDimension(TDXFScope& scope);
    void Insert(TDXFScope& scope, const TDXFBlock* block, TDXFInsertion insertion);
    void InsertCells(TDXFScope& scope, const TDXFBlock& block, const TDXFInsertion& insertion,
                     const TDXFLook& look);
    void ReadAttributes(TDXFScope& scope, const TDXFInsertion& insertion, const TDXFLook& look);
    void AddAttribute(TDXFScope& scope, TDXFInsertion insertion, const TDXFLook& look);
    [[nodiscard]] static std::optional<TDXFReport::TReason> ProblemOf(const TDXFScope& scope,
                                                                      const TDXFBlock* block);

    TDXFDrawing& m_drawing;
    TDXFBlocks m_blocks;
    TDXFLimits m_limits;
    TDXFRecord m_record; // of all scopes: what is needed behind an insertion is taken out before
    QSet<TZEPObject*> m_frozen; // layers
};

} // namespace ZEP
