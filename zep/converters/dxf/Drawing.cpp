#include <zep/converters/dxf/Drawing.h>

#include <QFileInfo>

namespace ZEP {

bool TDXFDrawing::IsAtEnd(std::string_view end) {
    if (Tags.Code() != 0) return false;
    if (Tags.ValStr() == end) return true;
    if (!Options.Extended || !IsDXFSectionMark(Tags.ValStr())) return false;
    Tags.go_back_to_last();
    return true;
}

std::optional<std::string_view> TDXFDrawing::ReadFile(const QString& fileName) {
    const qint64 bytes = QFileInfo(fileName).size();
    if (!Limits.TakeFile(bytes)) return std::nullopt;
    Budget.AddFile(bytes);
    return m_shared->Files.emplace_back(fileName).Text();
}

} // namespace ZEP
