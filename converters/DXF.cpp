#include "converters/DXF.h"

#include "converters/DXFReader.h"
#include "converters/RootUpdate.h"
#include "framework/Exception.h"
#include "framework/MappedFile.h"
#include "framework/Registry.h"

namespace ZEP {

namespace {

const TRegisterClass<TDXFConverter> Registered;

constexpr std::string_view BinaryMark = "AutoCAD Binary DXF";

[[noreturn]] void Refuse(const QString& what, const QString& reason) {
    throw Exception(QStringLiteral("TDXFConverter.LoadFromFile: ") + what + reason);
}

/// The beginning of a text, fit for a message.
QString Shown(std::string_view text) {
    constexpr std::size_t length = 40;
    const QString head =
        TDXFTextDecoder().Decode(text.substr(0, text.find_first_of("\r\n")).substr(0, length));
    QString shown;
    for (const QChar c : head) shown += c.isPrint() ? c : QChar(u'?');
    return shown;
}

void CheckForm(std::string_view text, const QString& what) {
    if (text.starts_with(BinaryMark))
        Refuse(what, QStringLiteral(" is binary DXF, and only its ASCII form can be read."));
}

void CheckIsDrawing(TDXFTags& tags, std::string_view text, const QString& what) {
    if (tags.IsDrawing() || tags.Cancelled()) return;
    Refuse(what,
           QStringLiteral(" is no DXF drawing: expected group codes and values in turn, a line "
                          "each, with a SECTION among them; it begins with \"%1\".")
               .arg(Shown(text)));
}

} // namespace

TDXFConverter::TDXFConverter(TComponent* owner) : TComponent(owner) {}

void TDXFConverter::SetRoot(TZEPObject* root) {
    if (root == m_root) return;
    if (m_root) m_root->RemoveFreeNotification(this);
    m_root = root;
    if (m_root) m_root->FreeNotification(this);
}

void TDXFConverter::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove && component == m_root) m_root = nullptr;
    TComponent::Notification(component, operation);
}

void TDXFConverter::CheckRoot(const char* method) const {
    if (m_root) return;
    throw Exception(
        QStringLiteral("TDXFConverter.%1: Can't load into Root=nil").arg(QLatin1String(method)));
}

void TDXFConverter::LoadFromFile() {
    CheckRoot("LoadFromFile");
    if (m_fileName.isEmpty())
        throw Exception(QStringLiteral("TDXFConverter.LoadFromFile: No file name defined"));
    if (m_clearBeforRead) m_root->Clear();
    const TMappedFile file(m_fileName, QStringLiteral("TDXFConverter.LoadFromFile"));
    Read(file.Text(), QStringLiteral("\"%1\"").arg(m_fileName));
}

void TDXFConverter::ReadDXF(std::string_view text) {
    CheckRoot("ReadDXF");
    Read(text, QStringLiteral("The text"));
}

void TDXFConverter::Read(std::string_view text, const QString& what) {
    m_report.Clear();
    m_cancelled = false;
    m_minExtent = m_maxExtent = zero3d;
    CheckForm(text, what);
    const TRootUpdate update(m_root);
    TDXFDrawing drawing(text, *m_root, {.CreateLayers = m_createLayers, .Extended = m_extended});
    drawing.Tags.SetProgress(GuardedProgress());
    CheckIsDrawing(drawing.Tags, text, what);
    TDXFReader(drawing).Read();
    TakeResults(drawing);
}

void TDXFConverter::TakeResults(TDXFDrawing& drawing) {
    m_cancelled = drawing.Tags.Cancelled();
    m_minExtent = drawing.MinExtent;
    m_maxExtent = drawing.MaxExtent;
    drawing.Report.MoveTo(m_report, drawing.Text);
    if (drawing.Tags.BadLine() > 0)
        m_report.Add(QStringLiteral("lines that are no group code (the reading ends there)"),
                     drawing.Tags.BadLine());
}

/// The host may free or replace the root while it is asked: then there is nothing to read into.
TProgress TDXFConverter::GuardedProgress() const {
    if (!m_progress) return {};
    return [this, root = m_root](qint64 done, qint64 total) {
        return m_progress(done, total) && m_root == root;
    };
}

} // namespace ZEP
