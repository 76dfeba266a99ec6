#include <zep/converters/rs274d/Converter.h>

#include <zep/converters/DumpFile.h>
#include <zep/converters/RootUpdate.h>
#include <zep/converters/rs274d/Objects.h>
#include <zep/converters/rs274d/Program.h>
#include <zep/framework/Exception.h>
#include <zep/framework/FileText.h>
#include <zep/framework/Registry.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Line.h>

#include <QScopeGuard>

#include <cmath>

namespace ZEP {

namespace {

const TRegisterClass<TRS274DConverter> RegisteredRS274DConverter;

constexpr TColor RapidColor = 0x808080;

/// Degrees of a line piece in an arc, so that ends on whole quarters lie on corners.
constexpr double ArcStep = 5;

} // namespace

TRS274DConverter::TRS274DConverter(TComponent* owner)
    : TFileConverter(owner, {QStringLiteral("TRS274DConverter"), QStringLiteral(".")}) {}

TRS274DConverter::~TRS274DConverter() = default;

void TRS274DConverter::LoadFromFile() {
    CheckFile("LoadFromFile");
    if (m_doDump) m_trace = std::make_unique<TDumpFile>(FileName(), Method("Dump"));
    const auto closeTrace = qScopeGuard([this] { m_trace.reset(); });
    ClearRoot("LoadFromFile");
    const TFileText file(FileName(), Method("LoadFromFile"));
    ReadNC(file.Text());
    if (m_trace) m_trace->Finish();
}

void TRS274DConverter::SaveToFile() {
    throw Exception(QStringLiteral("Only import is supported."), {.Method = Method("SaveToFile")});
}

void TRS274DConverter::ReadNC(std::string_view text) {
    CheckRoot("ReadNC");
    m_report.Clear();
    SetCancelled(false);
    m_colors = {};
    const TRootUpdate update(Root());
    const TRS274DOptions options{.Extended = m_extended,
                                 .StopOnErrors = m_stopOnErrors,
                                 .Trace = m_trace != nullptr,
                                 .FileName = FileName(),
                                 .Dialect = m_dialect};
    SetCancelled(
        !Finishes([&] { return ReadRS274D(text, options, *this, m_report, GuardedProgress()); }));
}

void TRS274DConverter::Dump(std::string_view text) {
    if (m_trace) m_trace->Write(text);
}

void TRS274DConverter::Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) {
    if (m_sink) m_sink->Rapid(from, to, line);
    if (!m_showQuickMove) return;
    if (TZEPLine* object = AddPathLine(RootThere(), from, to, RapidColor, line))
        object->SetStyle(psDot);
}

void TRS274DConverter::Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) {
    if (m_sink) m_sink->Feed(from, to, line);
    AddPathLine(RootThere(), from, to, PathColor(), line);
}

void TRS274DConverter::Drill(const TRS274DPoint& at, qint64 line) {
    if (m_sink) m_sink->Drill(at, line);
    AddPathPoint(RootThere(), at, PathColor(), line);
}

void TRS274DConverter::Arc(const TRS274DArc& arc, qint64 line) {
    if (m_sink) m_sink->Arc(arc, line);
    TZEPArc* object = AddPathArc(RootThere(), arc, PathColor(), line);
    if (m_extended && object)
        object->SetSegments(static_cast<int>(std::ceil(arc.Sweep / ArcStep - 1e-9)));
}

void TRS274DConverter::Curve(std::span<const TRS274DPoint> points, double length, qint64 line) {
    if (m_sink) m_sink->Curve(points, length, line);
    AddPathCurve(RootThere(), points, PathColor(), line);
}

void TRS274DConverter::NextTool() {
    if (m_sink) m_sink->NextTool();
    m_colors.Next();
}

void TRS274DConverter::ToolChange(const TRS274DTool& tool, qint64 line) {
    if (m_sink) m_sink->ToolChange(tool, line);
    m_colors.Change(tool.Number);
}

void TRS274DConverter::Settings(const TRS274DSettings& settings) {
    if (m_sink) m_sink->Settings(settings);
}

void TRS274DConverter::Dwell(double seconds, qint64 line) {
    if (m_sink) m_sink->Dwell(seconds, line);
}

} // namespace ZEP
