#include "converters/RS274D.h"

#include "converters/DumpFile.h"
#include "converters/RS274DObjects.h"
#include "converters/RS274DProgram.h"
#include "converters/RootUpdate.h"
#include "framework/Exception.h"
#include "framework/MappedFile.h"
#include "framework/Registry.h"
#include "objects/Arc.h"
#include "objects/Line.h"

#include <QScopeGuard>

#include <cmath>

namespace ZEP {

namespace {

const TRegisterClass<TRS274DConverter> Registered;

constexpr std::array ToolColors{TColor(0xFFFFFF), TColor(0x0000FF), TColor(0x00FF00),
                                TColor(0xFF0000), TColor(0xFFFF00), TColor(0xFF00FF),
                                TColor(0x00FFFF)};
constexpr TColor RapidColor = 0x808080;

/// Degrees of a line piece in an arc, so that ends on whole quarters lie on corners.
constexpr double ArcStep = 5;

} // namespace

TRS274DConverter::TRS274DConverter(TComponent* owner) : TComponent(owner) {}

TRS274DConverter::~TRS274DConverter() = default;

void TRS274DConverter::SetRoot(TZEPObject* root) {
    if (root == m_root) return;
    if (m_root) m_root->RemoveFreeNotification(this);
    m_root = root;
    if (m_root) m_root->FreeNotification(this);
}

void TRS274DConverter::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove && component == m_root) m_root = nullptr;
    TComponent::Notification(component, operation);
}

void TRS274DConverter::CheckRoot(const char* method) const {
    if (m_root) return;
    throw Exception(QStringLiteral("TRS274DConverter.%1: Can't load into Root=nil.")
                        .arg(QLatin1String(method)));
}

void TRS274DConverter::LoadFromFile() {
    CheckRoot("LoadFromFile");
    if (m_fileName.isEmpty())
        throw Exception(QStringLiteral("TRS274DConverter.LoadFromFile: No file name defined."));
    if (m_doDump)
        m_trace = std::make_unique<TDumpFile>(m_fileName, QStringLiteral("TRS274DConverter.Dump"));
    const auto closeTrace = qScopeGuard([this] { m_trace.reset(); });
    if (m_clearBeforRead) m_root->Clear();
    const TMappedFile file(m_fileName, QStringLiteral("TRS274DConverter.LoadFromFile"));
    ReadNC(file.Text());
    if (m_trace) m_trace->Finish();
}

void TRS274DConverter::SaveToFile() {
    throw Exception(QStringLiteral("TRS274DConverter.SaveToFile: Only import is supported."));
}

void TRS274DConverter::ReadNC(std::string_view text) {
    CheckRoot("ReadNC");
    m_report.Clear();
    m_cancelled = false;
    m_colorIndex = 0;
    const TRootUpdate update(m_root);
    const TRS274DOptions options{
        .Extended = m_extended, .StopOnErrors = m_stopOnErrors, .Trace = m_trace != nullptr};
    m_cancelled = !ReadRS274D(text, options, *this, m_report, GuardedProgress());
}

/// The host may free or replace the root while it is asked: then there is nothing to read into.
TProgress TRS274DConverter::GuardedProgress() const {
    if (!m_progress) return {};
    return [this, root = m_root](qint64 done, qint64 total) {
        return m_progress(done, total) && m_root == root;
    };
}

void TRS274DConverter::Dump(std::string_view text) {
    if (m_trace) m_trace->Write(text);
}

void TRS274DConverter::NextColor() {
    m_colorIndex = (m_colorIndex + 1) % ToolColors.size();
}

TColor TRS274DConverter::PathColor() const {
    return ToolColors[m_colorIndex];
}

void TRS274DConverter::Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) {
    if (m_showQuickMove) AddPathLine(*m_root, from, to, RapidColor, line)->SetStyle(psDot);
}

void TRS274DConverter::Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) {
    AddPathLine(*m_root, from, to, PathColor(), line);
}

void TRS274DConverter::Drill(const TRS274DPoint& at, qint64 line) {
    AddPathPoint(*m_root, at, PathColor(), line);
}

void TRS274DConverter::Arc(const TRS274DArc& arc, qint64 line) {
    TZEPArc* object = AddPathArc(*m_root, arc, PathColor(), line);
    if (m_extended) object->SetSegments(static_cast<int>(std::ceil(arc.Sweep / ArcStep - 1e-9)));
}

void TRS274DConverter::Curve(std::span<const TRS274DPoint> points, qint64 line) {
    AddPathCurve(*m_root, points, PathColor(), line);
}

} // namespace ZEP
