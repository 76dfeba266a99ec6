#pragma once

#include <QByteArray>

#include <algorithm>
#include <charconv>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP {

/// With a decimal point, whatever the locale says.
inline double NumberOf(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw std::invalid_argument("not a number: " + std::string(text));
    return number;
}

/// The words of a command in a file of cases: a verb, then values, and keywords with their values.
class TWords {
public:
    explicit TWords(const std::string& line) {
        std::istringstream words(line);
        for (std::string word; words >> word;) m_words.push_back(word);
    }

    [[nodiscard]] const std::string& Verb() const { return m_words.front(); }
    [[nodiscard]] std::size_t Count() const { return m_words.size(); }
    [[nodiscard]] bool Has(const std::string& keyword) const { return After(keyword) > 0; }
    /// The word at that place, behind the verb from 1 on; empty beyond the last one.
    [[nodiscard]] std::string At(std::size_t place) const {
        return place < m_words.size() ? m_words[place] : std::string();
    }
    [[nodiscard]] double Number(std::size_t place) const {
        return QByteArray::fromStdString(At(place)).toDouble();
    }
    [[nodiscard]] int Int(std::size_t place) const { return static_cast<int>(Number(place)); }
    /// The place behind a keyword, 0 where it is not there.
    [[nodiscard]] std::size_t After(const std::string& keyword) const {
        const auto found = std::find(m_words.begin() + 1, m_words.end(), keyword);
        return found == m_words.end() ? 0 : static_cast<std::size_t>(found - m_words.begin()) + 1;
    }
    /// The word behind a keyword.
    [[nodiscard]] std::string Word(const std::string& keyword) const {
        return Has(keyword) ? At(After(keyword)) : std::string();
    }

private:
    std::vector<std::string> m_words;
};

} // namespace ZEP
