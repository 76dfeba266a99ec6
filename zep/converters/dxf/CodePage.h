#pragma once

#include <QString>

#include <array>
#include <memory>
#include <string_view>

namespace ZEP {

/// Turns the bytes of a drawing's names and texts into characters, as its header says.
///
/// Files from AC1021 on are UTF-8. Older ones use the code page; where their bytes are UTF-8 beyond
/// ASCII all the same, they are taken as that, unless the code page has characters of two bytes,
/// which may look alike. What is no UTF-8 is taken by the code page in files of any version. A byte
/// that no character has becomes U+FFFD.
///
/// In all files "\U+00C4" stands for a character of Unicode and "\M+182A0" for one of two bytes in
/// the code page of the digit: 1: 932, 2: 950, 3: 949, 4: 1361, 5: 936.
class TDXFTextDecoder {
public:
    /// \param codePageName  $DWGCODEPAGE: "ANSI_1251", "dos850", "BIG5"; ANSI_1252 for one that is
    ///                      empty or unknown
    /// \param acadVersion   $ACADVER: "AC1015"; an old one where it is empty
    explicit TDXFTextDecoder(std::string_view codePageName = {}, std::string_view acadVersion = {});
    ~TDXFTextDecoder();
    TDXFTextDecoder(TDXFTextDecoder&&) noexcept;
    TDXFTextDecoder& operator=(TDXFTextDecoder&&) noexcept;

    /// Not for several threads at once.
    [[nodiscard]] QString Decode(std::string_view bytes) const;

private:
    class TConverter;
    static constexpr std::size_t MultiByteCount = 5;

    [[nodiscard]] QString Characters(std::string_view bytes) const;
    void ReplaceCodes(QString& text) const;
    [[nodiscard]] QString MultiByteCode(QStringView code) const;

    std::unique_ptr<TConverter> m_page;
    mutable std::array<std::unique_ptr<TConverter>, MultiByteCount> m_multiByte;
    bool m_pageFirst = false;
};

} // namespace ZEP
