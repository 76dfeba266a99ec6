#pragma once

#include <zep/converters/dxf/Record.h>

#include <deque>
#include <optional>
#include <string>

namespace ZEP {

/// How a part of an entity looks otherwise than the whole.
struct TDXFInk {
    /// A colour number; 0 (by block) means that of the whole.
    [[nodiscard]] static TDXFInk OfNumber(int number);
    /// A colour with its kind in the highest byte, as MULTILEADER and TABLE write it.
    [[nodiscard]] static TDXFInk OfRaw(int raw);

    std::optional<int> Color{};
    std::optional<int> TrueColor{};
    std::optional<int> Weight{};
    std::string_view LineType{}; ///< empty: that of the whole
};

/// A part of an entity as an entity of its own, which no text holds: it lies on the layer of the
/// whole and looks like it.
class TDXFPart {
public:
    /// \param whole  whose text outlives this
    /// \param kind   a literal, or that of the whole; it is counted by this name
    TDXFPart(const TDXFRecord& whole, std::string_view kind, const TDXFInk& ink = {});
    Q_DISABLE_COPY_MOVE(TDXFPart)

    /// \param text  outlives this
    TDXFPart& Set(int code, std::string_view text);
    TDXFPart& Set(int code, double number);
    TDXFPart& Set(int code, int number);
    /// In the groups `code`, `code` + 10 and `code` + 20.
    TDXFPart& Set(int code, const TGLArrayd3& point);
    /// A text that is kept here.
    TDXFPart& SetOwn(int code, std::string text);

    [[nodiscard]] const TDXFRecord& Record() const { return m_record; }

private:
    TDXFRecord m_record;
    std::deque<std::string> m_texts;
};

} // namespace ZEP
