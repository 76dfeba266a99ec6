#include <zep/converters/dxf/Record.h>

namespace ZEP {

namespace {

constexpr int FirstApplicationCode = 1000;
constexpr int EmbeddedObject = 101;

} // namespace

double TDXFRecord::TTag::Number() const {
    return DXFNumber(Value);
}

void TDXFRecord::TTag::SetCoordinate(int code, TGLArrayd3& point) const {
    const int axis = (Code - code) / 10;
    if (axis >= 0 && axis < 3 && Code == code + 10 * axis)
        point[static_cast<std::size_t>(axis)] = Number();
}

void TDXFRecord::Begin(std::string_view kind, qint64 line, bool isPart) {
    m_isPart = isPart;
    m_kind = kind;
    m_line = line;
    m_tags.clear();
    m_added.clear();
}

bool TDXFRecord::Read(TDXFTags& tags) {
    Begin(tags.ValStr(), tags.LineNumber());
    bool isEmbedded = false;
    int code = 0;
    while ((code = tags.NextGroupCode()) > 0) {
        isEmbedded = isEmbedded || code == EmbeddedObject;
        if (!isEmbedded && code < FirstApplicationCode)
            Add(code, tags.ValStr());
        else
            m_added.push_back({code, tags.ValStr()});
    }
    if (code < 0) return false;
    tags.go_back_to_last();
    return true;
}

void TDXFRecord::Add(int code, std::string_view value) {
    m_last[static_cast<std::size_t>(code)] = static_cast<std::uint32_t>(m_tags.size());
    m_tags.push_back({code, value});
}

const TDXFRecord::TTag* TDXFRecord::Find(int code) const {
    const std::size_t index = m_last[static_cast<std::size_t>(code)];
    return index < m_tags.size() && m_tags[index].Code == code ? &m_tags[index] : nullptr;
}

std::string_view TDXFRecord::Text(int code, std::string_view otherwise) const {
    const TTag* tag = Find(code);
    return tag ? tag->Value : otherwise;
}

double TDXFRecord::Number(int code, double otherwise) const {
    const TTag* tag = Find(code);
    return tag ? tag->Number() : otherwise;
}

int TDXFRecord::Integer(int code, int otherwise) const {
    const TTag* tag = Find(code);
    return tag ? DXFInteger(tag->Value) : otherwise;
}

TGLArrayd3 TDXFRecord::Point(int code, const TGLArrayd3& otherwise) const {
    return {Number(code, otherwise[0]), Number(code + 10, otherwise[1]),
            Number(code + 20, otherwise[2])};
}

} // namespace ZEP
