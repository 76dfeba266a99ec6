#pragma once

#include <QPageLayout>
#include <QPageSize>
#include <QString>

#include <memory>
#include <optional>

class QPrinter;

namespace ZEP {

class TDocument;
class TZEPPages;
class TZEPPanel;
struct TViewLook;

/// How what is shown comes to paper.
///
/// Defaults: on A4, in the direction that takes fewer pages or shows it larger, as large as the
/// page takes it.
struct TPaperWish {
    QPageSize Page{QPageSize::A4};
    std::optional<QPageLayout::Orientation> Orientation{}; ///< none: the better one
    std::optional<double> Scale{};                         ///< none: as large as the page takes it
    double LineWidth = 0.25;                               ///< millimetres
    bool Title = true; ///< a line with the file, the scale and the number of the page
    bool Guides = true;
};

/// \name As they are typed
/// Raise `Exception` for what is none.
/// @{
/// "A4", "Letter", "210x297" (millimetres).
[[nodiscard]] QPageSize PageNamed(const QString& text);
/// "1:2", "5:1"; none for "fit". From 1000:1 to 1:1000000.
[[nodiscard]] std::optional<double> ScaleNamed(const QString& text);
/// @}

/// What a panel shows of a document, on white pages. While it lives the view looks as on paper.
class TPaper {
public:
    /// Raises `Exception` where there is no room.
    TPaper(TZEPPanel& panel, TDocument& document, const TPaperWish& wish, int resolution = 300);
    ~TPaper();
    TPaper(const TPaper&) = delete;
    TPaper& operator=(const TPaper&) = delete;

    [[nodiscard]] const QPageLayout& Layout() const { return m_layout; }
    [[nodiscard]] const TZEPPages& Pages() const { return *m_pages; }

private:
    class TWhite;

    std::unique_ptr<TWhite> m_white;
    QPageLayout m_layout;
    std::unique_ptr<TZEPPages> m_pages;
};

/// Prints what a panel shows of a document. Raises `Exception`.
void Print(TZEPPanel& panel, TDocument& document, const TPaperWish& wish, QPrinter& printer);

/// The same to a PDF file. Raises `Exception`; an old file then stands.
void WritePaper(TZEPPanel& panel, TDocument& document, const TPaperWish& wish,
                const QString& fileName);

/// The same of what the camera of the document sees; needs a display, but shows no window.
void WritePaper(TDocument& document, const TViewLook& look, const TPaperWish& wish,
                const QString& fileName);

} // namespace ZEP
