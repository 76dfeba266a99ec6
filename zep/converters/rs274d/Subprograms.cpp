#include <zep/converters/rs274d/Subprograms.h>

#include <zep/framework/Exception.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace ZEP {

namespace {

/// What programs are called; the first one is taken where there are several.
const QStringList& Suffixes() {
    static const QStringList suffixes{QStringLiteral("ngc"),   QStringLiteral("nc"),
                                      QStringLiteral("tap"),   QStringLiteral("cnc"),
                                      QStringLiteral("gcode"), QString()};
    return suffixes;
}

/// The label that a file is called by: "100" for "O0100", "<SQUARE>" for "Square".
std::string LabelOf(const QString& base) {
    const QString name = base.toUpper().remove(u' ');
    const QString digits = name.startsWith(u'O') ? name.mid(1) : name;
    const bool isNumber = !digits.isEmpty() && std::ranges::all_of(digits, [](QChar c) {
        return c >= u'0' && c <= u'9';
    });
    return isNumber ? RS274DLabelText(digits.toStdString()) : '<' + name.toStdString() + '>';
}

} // namespace

TRS274DText::TRS274DText(const QString& path, const QString& name)
    : m_name(name), m_file(std::make_unique<TFileText>(path)), m_bytes(m_file->Text()) {}

std::optional<TLineSource> TRS274DText::FindSubprogram(const std::string& label) {
    const TRS274DControlWord* word = Words().FindSubprogram(label);
    if (!word) return std::nullopt;
    TLineSource start = word->At;
    std::string_view passed;
    // A label alone may have words behind it, and does nothing itself; SUB is for who comes by.
    if (word->Control == TRS274DControl::Sub) start.Next(passed);
    return start;
}

const TLineSource* TRS274DText::FindLine(double number) {
    if (!m_isNumbered) NumberLines();
    const auto place = std::ranges::lower_bound(m_numbered, number, {}, &TNumbered::Number);
    return place != m_numbered.end() && place->Number == number ? &place->At : nullptr;
}

const TLineSource* TRS274DText::FindLine(double number, std::size_t from) {
    if (!m_isNumbered) NumberLines();
    const auto next = std::ranges::upper_bound(m_programs, from);
    const std::size_t end = next != m_programs.end() ? *next : m_bytes.size();
    const std::size_t begin = next != m_programs.begin() ? *std::prev(next) : 0;
    // Lines of one number stand in their order.
    const auto firstFrom = [this, number](std::size_t position) {
        return std::ranges::lower_bound(
            m_numbered, std::pair(number, position), {},
            [](const TNumbered& line) { return std::pair(line.Number, line.At.Position()); });
    };
    for (const auto place : {firstFrom(from), firstFrom(begin)})
        if (place != m_numbered.end() && place->Number == number && place->At.Position() < end)
            return &place->At;
    return nullptr;
}

void TRS274DText::NumberLines() {
    m_isNumbered = true;
    TLineSource lines(m_bytes);
    TRS274DBlock block;
    std::string_view line;
    for (TLineSource at = lines; lines.Next(line); at = lines) {
        if (line.size() > MaxRS274DLineLength || line.find_first_of("nNoO") == line.npos) continue;
        block.Read(line, true);
        const auto& words = block.Words();
        if (words.empty()) continue;
        if (words[0].Letter == 'O') m_programs.push_back(at.Position());
        if (words[0].Letter == 'N') m_numbered.push_back({words[0].Value, at});
    }
    std::ranges::stable_sort(m_numbered, {}, &TNumbered::Number);
}

TRS274DSubprograms::TRS274DSubprograms(std::string_view program, const QString& fileName)
    : m_program(program), m_fileName(fileName) {}

TRS274DSubprogram TRS274DSubprograms::Find(const std::string& label, TRS274DText& from) {
    for (TRS274DText* text : {&from, &m_program})
        if (const auto start = text->FindSubprogram(label)) return {text, *start};
    TRS274DText* file = FindFile(label);
    if (!file) return {};
    return {file, file->FindSubprogram(label).value_or(TLineSource(file->Bytes()))};
}

TRS274DText* TRS274DSubprograms::FindFile(const std::string& label) {
    const auto known = m_files.find(label);
    if (known != m_files.end()) return known->second.get();
    const QString path = PathOf(label);
    if (path.isEmpty()) return nullptr;
    auto& text = m_files[label];
    m_bytes += QFileInfo(path).size();
    if (m_files.size() > MaxRS274DFiles || m_bytes > MaxRS274DFileBytes) return nullptr;
    try {
        text = std::make_unique<TRS274DText>(path, QFileInfo(path).fileName());
    } catch (const Exception&) {
        return nullptr; // the caller tells that there is none
    }
    return text.get();
}

QString TRS274DSubprograms::PathOf(const std::string& label) {
    if (m_fileName.isEmpty()) return {};
    if (!m_isListed) List();
    const auto place = m_paths.find(label);
    if (place == m_paths.end()) return {};
    return IsFileIn(QFileInfo(m_fileName).path(), place->second) ? place->second : QString();
}

void TRS274DSubprograms::List() {
    m_isListed = true;
    const QDir folder(QFileInfo(m_fileName).path());
    const QString own = QFileInfo(m_fileName).suffix();
    QStringList suffixes = Suffixes();
    suffixes.prepend(own.toLower());
    std::map<std::string, qsizetype> ranks;
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
        const QFileInfo file(name);
        const qsizetype rank = suffixes.indexOf(file.suffix().toLower());
        if (rank < 0) continue;
        const auto [place, isNew] = ranks.emplace(LabelOf(file.completeBaseName()), rank);
        if (!isNew && place->second <= rank) continue;
        place->second = rank;
        m_paths[place->first] = folder.filePath(name);
    }
}

} // namespace ZEP
