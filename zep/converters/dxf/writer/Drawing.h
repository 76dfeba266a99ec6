#pragma once

#include <zep/converters/Progress.h>
#include <zep/converters/dxf/writer/Entities.h>

#include <span>

class QIODevice;

namespace ZEP {

class TReadReport;

/// Writes trees as a drawing (AC1018, the first version with true colours). What stands in front of
/// the entities tells of all of them: they are gone through twice, first without writing.
class TDXFDrawingWriter {
public:
    /// \param roots     whose children are written, in the coordinates of their roots
    /// \param viewport  with a view of the whole
    TDXFDrawingWriter(std::span<TZEPObject* const> roots, bool viewport)
        : m_roots(roots), m_hasViewport(viewport) {}

    /// Asked with the objects written and those in all; may not change the trees but to end the
    /// writing with `false`.
    void SetProgress(TProgress progress) { m_progress = std::move(progress); }
    /// Raises `Exception` where the device takes not all of it, and `TReadingEnd` where the
    /// progress call ends it.
    void Write(QIODevice& device, TReadReport& report);

private:
    void WriteObjects(TDXFEntityWriter& writer, bool asks);
    void WriteBelow(TZEPObject& object, const TDXFPlace& place, TDXFEntityWriter& writer,
                    bool asks);
    void Ask();
    static void WriteHeader(TDXFPairs& pairs, const TZEPBounds& bounds, bool hasWidths,
                            quint64 free);
    void WriteTables(TDXFPairs& pairs, const TZEPBounds& bounds, quint64 free) const;

    std::span<TZEPObject* const> m_roots;
    bool m_hasViewport;
    TProgress m_progress;
    TDXFWrittenTables m_tables;
    qint64 m_done = 0, m_total = 0; ///< objects
};

} // namespace ZEP
