#pragma once

#include <zep/Export.h>
#include <zep/converters/FileConverter.h>
#include <zep/converters/rs274d/Dialect.h>
#include <zep/converters/rs274d/Report.h>
#include <zep/converters/rs274d/Sink.h>
#include <zep/converters/rs274d/ToolColors.h>

#include <memory>

namespace ZEP {

class TDumpFile;

/// Reads an NC part program in RS-274D word-address form into the scene: each motion becomes an
/// object under `Root` (a line, an arc, a point where a hole is drilled, a polyline for a helix),
/// named "Line %d" after its line in the file and coloured by the tool. Rapid moves are dotted and
/// grey. What a program may hold, and what the two ways of reading do with it, is in
/// docs/rs274d.md.
///
/// Defaults: the plain reading, the dialect NGC, `ClearBeforRead` and `ShowQuickMove` set, no
/// trace.
class ZEP_CORE_EXPORT TRS274DConverter : public TFileConverter, private TRS274DSink {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/Object.h")
    Q_PROPERTY(bool DoDump READ DoDump WRITE SetDoDump)
    Q_CLASSINFO("DoDump", "false")
    Q_PROPERTY(ZEP::TZEPObject* Root READ Root WRITE SetRoot)
    Q_PROPERTY(bool ClearBeforRead READ ClearBeforRead WRITE SetClearBeforRead)
    Q_CLASSINFO("ClearBeforRead", "true")
    Q_PROPERTY(QString FileName READ FileName WRITE SetFileName)
    Q_PROPERTY(bool ShowQuickMove READ ShowQuickMove WRITE SetShowQuickMove)
    Q_CLASSINFO("ShowQuickMove", "true")
    Q_PROPERTY(bool StopOnErrors READ StopOnErrors WRITE SetStopOnErrors)
    Q_CLASSINFO("StopOnErrors", "false")
    Q_PROPERTY(bool Extended READ Extended WRITE SetExtended)
    Q_CLASSINFO("Extended", "false")
    Q_PROPERTY(ZEP::TRS274DDialects::TDialect Dialect READ Dialect WRITE SetDialect)
public:
    explicit TRS274DConverter(TComponent* owner = nullptr);
    ~TRS274DConverter() override;

    [[nodiscard]] bool DoDump() const { return m_doDump; }
    /// Writes beside the program, with the extension ".dmp", how each word was understood.
    void SetDoDump(bool doDump) { m_doDump = doDump; }
    [[nodiscard]] bool ShowQuickMove() const { return m_showQuickMove; }
    /// Without it, rapid moves only move the position.
    void SetShowQuickMove(bool show) { m_showQuickMove = show; }
    [[nodiscard]] bool StopOnErrors() const { return m_stopOnErrors; }
    /// Raises `Exception` on program errors instead of passing over the block.
    void SetStopOnErrors(bool stop) { m_stopOnErrors = stop; }
    [[nodiscard]] bool Extended() const { return m_extended; }
    /// Draws what a machine would do, in millimetres, instead of the plain path.
    void SetExtended(bool extended) { m_extended = extended; }
    [[nodiscard]] TRS274DDialect Dialect() const { return m_dialect; }
    /// Whose words the program has; the plain reading knows none. `GuessRS274DDialect` may tell.
    void SetDialect(TRS274DDialect dialect) { m_dialect = dialect; }

    /// Reads the file into `Root`. Raises `Exception` without `Root` or `FileName`, for a file
    /// that can not be read, for errors of the program with `StopOnErrors`, and for limits that
    /// are exceeded; what was read before an error stays.
    void LoadFromFile();
    /// Always raises `Exception`: programs are only read.
    void SaveToFile();
    /// Reads a program from memory into `Root`, below what is there.
    void ReadNC(std::string_view text);

    [[nodiscard]] TRS274DSink* Sink() const { return m_sink; }
    /// Is told the path beside the objects, a `TToolPath` for example: each call before its
    /// object is made.
    /// \param sink  outlives the readings; null: none
    void SetSink(TRS274DSink* sink) { m_sink = sink; }

    /// What the last reading passed over.
    [[nodiscard]] const TRS274DReport& Report() const { return m_report; }

    /// The next of the seven tool colours; after the last comes the first. Each program begins
    /// with the first.
    void NextColor() { m_colors.Next(); }
    /// Colour of the path from here on.
    [[nodiscard]] TColor PathColor() const { return m_colors.Current(); }
    /// Adds a line to the trace; nothing while no trace is written.
    void Dump(std::string_view text) override;

private:
    void Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override;
    void Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override;
    void Drill(const TRS274DPoint& at, qint64 line) override;
    void Arc(const TRS274DArc& arc, qint64 line) override;
    void Curve(std::span<const TRS274DPoint> points, double length, qint64 line) override;
    void NextTool() override;
    void ToolChange(const TRS274DTool& tool, qint64 line) override;
    void Settings(const TRS274DSettings& settings) override;
    void Dwell(double seconds, qint64 line) override;

    TRS274DReport m_report;
    std::unique_ptr<TDumpFile> m_trace;
    TRS274DToolColors m_colors;
    TRS274DSink* m_sink = nullptr;
    bool m_doDump = false;
    bool m_showQuickMove = true;
    bool m_stopOnErrors = false;
    bool m_extended = false;
    TRS274DDialect m_dialect = TRS274DDialect::NGC;
};

} // namespace ZEP
