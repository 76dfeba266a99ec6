#pragma once

#include <zep/converters/dxf/Blocks.h>
#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/Sheets.h>

#include <QSet>

#include <optional>

namespace ZEP {

class TDXFExtendedReader;

/// A drawing in another file (an external reference), or why there is none.
struct TDXFOtherDrawing {
    TDXFExtendedReader* Reader = nullptr;
    std::size_t Size = 0; ///< of its text
    TDXFReport::TReason Reason = TDXFReport::TReason::NoFile;
};

/// Finds them.
class TDXFOtherDrawings {
public:
    /// \param block  that stands for it
    /// \param line   of the insertion
    virtual TDXFOtherDrawing Find(const TDXFBlock& block, qint64 line) = 0;

protected:
    ~TDXFOtherDrawings() = default;
};

/// The extended reading of a drawing's layers, blocks and entities.
class TDXFExtendedReader final : private TDXFInserter {
public:
    TDXFExtendedReader(TDXFDrawing& drawing, TDXFOtherDrawings& others);

    /// Reads the layer of the table whose code 0 was taken last.
    void ReadLayer();
    /// \name Read the table whose name was taken last
    /// @{
    void ReadLineTypes();
    void ReadTextStyles();
    void ReadDimensionStyles();
    void ReadBlockRecords();
    /// @}
    /// \name Sections, whose name was taken last
    /// @{
    void ReadBlocks() { m_blocks.Read(m_drawing.Tags, m_drawing.Text); }
    void ReadObjects();
    void ReadEntities();
    /// @}
    /// All sections of entities, for an insertion into another drawing.
    void ReadEntitiesInto(TDXFScope& scope);
    [[nodiscard]] TDXFDrawing& Drawing() const { return m_drawing; }
    /// Makes the sheets that objects declare, before any entity.
    void MakeSheets() { m_sheets.Make(); }
    /// Reads the blocks of sheets, behind all entities.
    void ReadSheets();

private:
    /// \param kind  of the records of a table
    template <class Add>
    void ReadTable(std::string_view kind, Add&& add);
    void SetLook(TZEPObject& layer);
    void ReadEntities(TDXFScope& scope, std::string_view end);
    void ReadEntity(TDXFScope& scope);
    void ReadViewport(TDXFScope& scope);
    void AddOnSheet(TDXFAddEntity add, TDXFBuilder& builder);
    void ReadInsert(TDXFScope& scope);
    bool InsertNamed(TDXFScope& scope, const TDXFRecord& record, std::string_view name,
                     const TDXFInsertion& insertion) override;
    void Insert(TDXFScope& scope, const TDXFRecord& record, const TDXFBlock* block,
                TDXFInsertion insertion, bool withAttributes);
    void InsertCells(TDXFScope& scope, const TDXFBlock& block, const TDXFInsertion& insertion,
                     const TDXFLook& look);
    void InsertOther(TDXFScope& scope, const TDXFBlock& block, const TDXFInsertion& insertion,
                     const TDXFLook& look, qint64 line);
    void ReadAttributes(TDXFScope& scope, const TDXFInsertion& insertion, const TDXFLook& look);
    void AddAttribute(TDXFScope& scope, TDXFInsertion insertion, const TDXFLook& look);
    [[nodiscard]] static std::optional<TDXFReport::TReason> ProblemOf(const TDXFScope& scope,
                                                                      const TDXFBlock* block);

    TDXFDrawing& m_drawing;
    TDXFBlocks m_blocks;
    TDXFSheets m_sheets;
    TDXFLimits& m_limits;
    TDXFOtherDrawings& m_others;
    TDXFRecord m_record; // of all scopes: what is needed behind an insertion is taken out before
    QSet<TZEPObject*> m_frozen; // layers
};

} // namespace ZEP
