#pragma once

#include <zep/converters/dxf/Tags.h>

namespace ZEP {

/// All groups of one entity, for the kinds where a group stands more than once. It may be read
/// again and again without allocating.
class TDXFRecord {
public:
    struct TTag {
        int Code;
        std::string_view Value;

        /// 0 where the value is no number.
        [[nodiscard]] double Number() const;
        /// Its coordinate of a point whose x, y and z stand in the groups `code`, `code` + 10 and
        /// `code` + 20; other tags change nothing.
        void SetCoordinate(int code, TGLArrayd3& point) const;
    };

    /// Reads the groups of the entity whose code 0 was taken last, up to the next code 0, which is
    /// pushed back. What applications add (groups from 1000 on) and embedded objects (from a group
    /// 101 on) stand apart. False where the text ends before that.
    bool Read(TDXFTags& tags);
    /// \name Make one that no text holds
    /// @{
    /// \param isPart  of another one
    void Begin(std::string_view kind, qint64 line, bool isPart = false);
    /// \param code  below 1000
    void Add(int code, std::string_view value);
    /// @}

    /// It is one of many things that an entity of the text shows.
    [[nodiscard]] bool IsPart() const { return m_isPart; }
    [[nodiscard]] std::string_view Kind() const { return m_kind; }
    /// Of its code 0.
    [[nodiscard]] qint64 Line() const { return m_line; }
    /// As they stand in the text.
    [[nodiscard]] const std::vector<TTag>& Tags() const { return m_tags; }
    /// What applications add.
    [[nodiscard]] const std::vector<TTag>& Added() const { return m_added; }

    /// \name The last value of a group; `otherwise` where there is none
    /// @{
    [[nodiscard]] bool Has(int code) const { return Find(code) != nullptr; }
    [[nodiscard]] std::string_view Text(int code, std::string_view otherwise = {}) const;
    [[nodiscard]] double Number(int code, double otherwise = 0) const;
    [[nodiscard]] int Integer(int code, int otherwise = 0) const;
    [[nodiscard]] bool Flag(int code, int flag) const { return (Integer(code) & flag) != 0; }
    /// x, y and z stand in the groups `code`, `code` + 10 and `code` + 20.
    [[nodiscard]] TGLArrayd3 Point(int code, const TGLArrayd3& otherwise = {}) const;
    /// @}

private:
    static constexpr std::size_t CodeCount = 1000;

    [[nodiscard]] const TTag* Find(int code) const;

    std::string_view m_kind;
    qint64 m_line = 0;
    bool m_isPart = false;
    std::vector<TTag> m_tags;
    std::vector<TTag> m_added;
    /// Index of the last tag of each code; it counts where that tag has the code.
    std::array<std::uint32_t, CodeCount> m_last{};
};

} // namespace ZEP
