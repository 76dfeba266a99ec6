#pragma once

#include <zep/converters/rs274d/ControlWords.h>
#include <zep/converters/rs274d/Macros.h>
#include <zep/framework/FileText.h>

#include <QString>

#include <map>
#include <memory>
#include <optional>

namespace ZEP {

/// Files of subprograms that one program may call, and the bytes of all of them.
inline constexpr int MaxRS274DFiles = 100;
inline constexpr qint64 MaxRS274DFileBytes = qint64(1) << 28;

/// The text of a program, or of a file with subprograms. What stands where in it is looked for at
/// the first question.
class TRS274DText {
public:
    explicit TRS274DText(std::string_view bytes) : m_bytes(bytes) {}
    /// Raises `Exception` where the file cannot be read.
    TRS274DText(const QString& path, const QString& name);

    /// Of the file; empty for the program itself.
    [[nodiscard]] const QString& Name() const { return m_name; }
    [[nodiscard]] std::string_view Bytes() const { return m_bytes; }
    [[nodiscard]] const TRS274DControlWords& Words() {
        if (!m_words) m_words = std::make_unique<TRS274DControlWords>(m_bytes);
        return *m_words;
    }
    /// About to hand out the first line of the subprogram of that label.
    [[nodiscard]] std::optional<TLineSource> FindSubprogram(const std::string& label);
    /// The loops of macros.
    [[nodiscard]] const TRS274DMacroLoops& Loops() {
        if (!m_loops) m_loops = std::make_unique<TRS274DMacroLoops>(m_bytes);
        return *m_loops;
    }
    /// About to hand out the first line with that number (N); null without one.
    [[nodiscard]] const TLineSource* FindLine(double number);
    /// The same among the lines of the program, from its O-word to the next one, that the byte at
    /// `from` belongs to: the next such line, else the first one.
    [[nodiscard]] const TLineSource* FindLine(double number, std::size_t from);

private:
    struct TNumbered {
        double Number;
        TLineSource At;
    };
    void NumberLines();

    QString m_name;
    std::unique_ptr<TFileText> m_file;
    std::string_view m_bytes;
    std::unique_ptr<TRS274DControlWords> m_words;
    std::unique_ptr<TRS274DMacroLoops> m_loops;
    std::vector<TNumbered> m_numbered;   ///< by number, then by place
    std::vector<std::size_t> m_programs; ///< bytes before their O-words
    bool m_isNumbered = false;
};

/// Where a subprogram begins.
struct TRS274DSubprogram {
    TRS274DText* Text = nullptr; ///< null: there is none
    TLineSource Start{{}};       ///< about to hand out its first line
};

/// Finds the subprograms of a program: in the text that calls, in the program, and in files beside
/// it, by number ("1234.nc", "O1234.ngc") or by name ("square.ngc"), whatever the case. Only
/// ordinary files of that folder are found, and links to such.
class TRS274DSubprograms {
public:
    /// \param fileName  the program's own; may be empty
    TRS274DSubprograms(std::string_view program, const QString& fileName);

    [[nodiscard]] TRS274DText& Program() { return m_program; }
    /// \param label  "100", "<NAME>"
    [[nodiscard]] TRS274DSubprogram Find(const std::string& label, TRS274DText& from);

private:
    TRS274DText* FindFile(const std::string& label);
    [[nodiscard]] QString PathOf(const std::string& label);
    void List();

    TRS274DText m_program;
    QString m_fileName;
    std::map<std::string, QString> m_paths; ///< by the label that a file is called by
    std::map<std::string, std::unique_ptr<TRS274DText>> m_files; ///< null: it cannot be read
    qint64 m_bytes = 0;
    bool m_isListed = false;
};

} // namespace ZEP
