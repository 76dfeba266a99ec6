#include <zep/converters/dxf/Converter.h>

#include <zep/converters/Placing.h>
#include <zep/converters/RootUpdate.h>
#include <zep/converters/dxf/Reader.h>
#include <zep/converters/dxf/writer/Drawing.h>
#include <zep/framework/Exception.h>
#include <zep/framework/FileSaving.h>
#include <zep/framework/FileText.h>
#include <zep/framework/Registry.h>

#include <QPointer>

#include <algorithm>
#include <vector>

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

/// Tells that objects have come or gone below some, also where these themselves are freed.
class TTreeWatch {
public:
    explicit TTreeWatch(std::span<TZEPObject* const> roots) {
        for (TZEPObject* root : roots) {
            m_roots.emplace_back(root);
            root->RegisterNotify(Listener());
        }
    }
    ~TTreeWatch() {
        for (const QPointer<TZEPObject>& root : m_roots)
            if (root) root->UnregisterNotify(Listener());
    }
    Q_DISABLE_COPY_MOVE(TTreeWatch)

    [[nodiscard]] bool HasChanged() const {
        return m_hasChanged || std::ranges::any_of(m_roots, &QPointer<TZEPObject>::isNull);
    }

private:
    [[nodiscard]] TZEPObjectNotify Listener() const {
        const auto note = [](void* context, TZEPObject*, TZEPObjectAction action, const void*) {
            auto& watch = *static_cast<TTreeWatch*>(context);
            if (action == saInsert || action == saRemove || action == saMove)
                watch.m_hasChanged = true;
        };
        return {note, const_cast<TTreeWatch*>(this)};
    }

    std::vector<QPointer<TZEPObject>> m_roots;
    bool m_hasChanged = false;
};

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
    TDXFDrawing drawing(
        text, *Root(),
        {.CreateLayers = m_createLayers, .Extended = m_extended, .FileName = fileName});
    drawing.Tags.SetProgress(GuardedProgress());
    CheckIsDrawing(drawing.Tags, text, fileName);
    SetCancelled(!Finishes([&] {
        TDXFReader(drawing).Read();
        return !drawing.Tags.Cancelled();
    }));
    TakeResults(drawing);
}

void TDXFConverter::SaveToFile() {
    constexpr const char* method = "SaveToFile";
    if (!Root()) throw Exception(QStringLiteral("Can't save Root=nil"), {.Method = Method(method)});
    CheckFile(method);
    SetCancelled(false);
    TZEPObject* root = Root();
    try {
        SaveFile(FileName(), [&](QIODevice& device) {
            if (!WriteDXF(device, {&root, 1})) throw TReadingEnd();
        });
    } catch (const TReadingEnd&) {
    } catch (const Exception& error) {
        throw Exception(error.Text(), {.Method = Method(method), .File = FileName()});
    }
}

bool TDXFConverter::WriteDXF(QIODevice& device, std::span<TZEPObject* const> roots) {
    m_report.Clear();
    TDXFDrawingWriter writer(roots, m_writeVPORTInfo);
    const TTreeWatch watch(roots);
    const TProgress progress = GuardedProgress();
    if (progress)
        writer.SetProgress([&](qint64 done, qint64 total) {
            return progress(done, total) && !watch.HasChanged();
        });
    SetCancelled(!Finishes([&] {
        writer.Write(device, m_report);
        return true;
    }));
    return !Cancelled();
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
