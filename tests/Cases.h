#pragma once

#include <gtest/gtest.h>

#include <QDir>

#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace ZEP {

/// What goes in, and what is to come out, in a file of such cases:
///
///     == arc, angles beyond a turn
///     0 ARC|10 1|40 2
///     --
///     Arc at (1 0 0)
///
/// An input may say `\x1F` for a byte that is no text.
struct TCase {
    std::string Name, Input, Expected;
};

inline std::string Unescaped(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text.substr(i, 2) == "\\x" && i + 3 < text.size() &&
                              std::isxdigit(static_cast<unsigned char>(text[i + 2])) &&
                              std::isxdigit(static_cast<unsigned char>(text[i + 3]));
        if (isEscape)
            bytes += static_cast<char>(std::stoi(std::string(text.substr(i + 2, 2)), nullptr, 16));
        else
            bytes += text[i];
        if (isEscape) i += 3;
    }
    return bytes;
}

inline std::vector<TCase> ReadCases(const std::string& path) {
    std::ifstream file(path);
    std::vector<TCase> cases;
    bool isInput = true;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("== ")) {
            cases.push_back({line.substr(3), {}, {}});
            isInput = true;
        } else if (line == "--") {
            isInput = false;
        } else if (!cases.empty()) {
            (isInput ? cases.back().Input : cases.back().Expected) += line + '\n';
        }
    }
    return cases;
}

inline void WriteCases(const std::string& path, const std::vector<TCase>& cases) {
    std::ofstream file(path);
    for (const TCase& c : cases) file << "== " << c.Name << '\n' << c.Input << "--\n" << c.Expected;
}

/// Compares the answer to each input of a file, `tests/data/cases/NAME`, with what is expected.
/// With `ZEP_KEEP_CASES=NAME` the answers become what is expected: look at what has changed.
inline void ExpectCases(const std::string& name,
                        const std::function<std::string(const TCase&)>& answer) {
    const std::string path = ZEP_TEST_DATA "/cases/" + name;
    std::vector<TCase> cases = ReadCases(path);
    EXPECT_FALSE(cases.empty()) << path;
    const char* kept = std::getenv("ZEP_KEEP_CASES");
    for (TCase& c : cases) {
        std::string actual = answer({c.Name, Unescaped(c.Input), c.Expected});
        if (!actual.empty() && !actual.ends_with('\n')) actual += '\n';
        if (kept && name == kept)
            c.Expected = actual;
        else
            EXPECT_EQ(actual, c.Expected) << name << ": " << c.Name << '\n' << c.Input;
    }
    if (kept && name == kept) WriteCases(path, cases);
}

/// Each line of an input, with what it makes behind a colon where there is any.
inline std::string EachLine(const TCase& c,
                            const std::function<std::string(const std::string&)>& answer) {
    std::istringstream lines(c.Input);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        const std::string made = answer(line);
        text += line + (made.empty() ? "" : ": " + made) + '\n';
    }
    return text;
}

/// The files of a folder of `tests/data/cases`, for tests with them as their parameter.
inline std::vector<std::string> CaseFiles(const std::string& folder) {
    std::vector<std::string> names;
    const QDir files(QStringLiteral(ZEP_TEST_DATA "/cases/") + QString::fromStdString(folder));
    for (const QString& name : files.entryList(QDir::Files))
        names.push_back(folder + "/" + name.toStdString());
    return names;
}

/// The name of a test with a file as its parameter.
inline std::string CaseName(const testing::TestParamInfo<std::string>& info) {
    std::string name = info.param.substr(info.param.find('/') + 1);
    name = name.substr(0, name.find('.'));
    std::erase_if(name, [](unsigned char c) { return !std::isalnum(c); });
    return name;
}

} // namespace ZEP
