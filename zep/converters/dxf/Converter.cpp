#include <zep/converters/dxf/Converter.h>

#include <zep/converters/RootUpdate.h>
#include <zep/converters/dxf/Reader.h>
#include <zep/framework/Exception.h>
#include <zep/framework/FileText.h>
#include <zep/framework/Registry.h>

namespace ZEP {

namespace {

const TRegisterClass<TDXFConverter> RegisteredDXFConverter;

constexpr std::string_view BinaryMark = "AutoCAD Binary DXF";

[[noreturn]] void Refuse(const QString& fileName, const QString& reason) {
    const QString what =
        fileName.isEmpty() ? QStringLiteral("The text") : QStringLiteral("\"%1\"").arg(fileName);
    throw Exception(what + reason,
                    {.Method = QStringLiteral("TDXFConverter.LoadFromFile"), .File = fileName});
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

void CheckForm(std::string_view text, const QString& fileName) {
    if (text.starts_with(BinaryMark))
        Refuse(fileName, QStringLiteral(" is binary DXF, and only its ASCII form can be read."));
}

void CheckIsDrawing(TDXFTags& tags, std::string_view text, const QString& fileName) {
    if (tags.IsDrawing() || tags.Cancelled()) return;
    Refuse(fileName,
           QStringLiteral(" is no DXF drawing: expected group codes and values in turn, a line "
                          "each, with a SECTION among them; it begins with \"%1\".")
               .arg(Shown(text)));
}

} // namespace

TDXFConverter::TDXFConverter(TComponent* owner)
    : TFileConverter(owner, {QStringLiteral("TDXFConverter"), {}}) {}

void TDXFConverter::LoadFromFile() {
    CheckFile("LoadFromFile");
    ClearRoot("LoadFromFile");
    const TFileText file(FileName(), Method("LoadFromFile"));
    Read(file.Text(), FileName());
}

void TDXFConverter::ReadDXF(std::string_view text) {
    CheckRoot("ReadDXF");
    Read(text, {});
}

void TDXFConverter::Read(std::string_view text, const QString& fileName) {
    m_report.Clear();
    SetCancelled(false);
    m_minExtent = m_maxExtent = zero3d;
    CheckForm(text, fileName);
    const TRootUpdate update(Root());
    TDXFDrawing drawing(text, *Root(), {.CreateLayers = m_createLayers, .Extended = m_extended});
    drawing.Tags.SetProgress(GuardedProgress());
    CheckIsDrawing(drawing.Tags, text, fileName);
    SetCancelled(!Finishes([&] {
        TDXFReader(drawing).Read();
        return !drawing.Tags.Cancelled();
    }));
    TakeResults(drawing);
}

void TDXFConverter::TakeResults(TDXFDrawing& drawing) {
    m_minExtent = drawing.MinExtent;
    m_maxExtent = drawing.MaxExtent;
    drawing.Report.MoveTo(m_report, drawing.Text);
    if (drawing.Tags.BadLine() > 0)
        m_report.Add(QStringLiteral("lines that are no group code (the reading ends there)"),
                     drawing.Tags.BadLine());
}

} // namespace ZEP
