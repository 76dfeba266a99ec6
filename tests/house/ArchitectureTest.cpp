#include <gmock/gmock.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <map>
#include <set>

namespace ZEP {
namespace {

/// What each file includes, by path from the root; angle brackets stay on others' headers.
using TSources = std::map<QString, QStringList>;
using TLines = std::vector<std::string>;

/// From the lowest floor to the highest: each includes from its own and from those below. Beside
/// the macro of exports, what stands in `zep/` itself are the umbrella headers and the version.
constexpr const char* Floors[] = {"zep/Export.h", // any header may need it
                                  "zep/framework/",
                                  "zep/gl/",
                                  "zep/appearance/materials/",
                                  "zep/scene/",
                                  "zep/appearance/effects/",
                                  "zep/objects/",
                                  "zep/batch/",
                                  "zep/sheets/",
                                  "zep/view/",
                                  "zep/converters/",
                                  "zep/stock/",
                                  "zep/widgets/",
                                  "zep/",
                                  "viewer/content/",
                                  "viewer/drawing/",
                                  "viewer/files/",
                                  "viewer/window/",
                                  "viewer/"};
/// Programs beside each other: of the floors, each may look at the library alone.
constexpr const char* Programs[] = {"tools/", "designer/", "examples/"};
constexpr const char* WindowSystemHeader = "^<(X11/|xcb/|GL/glx|EGL/|wayland)";
constexpr const char* WindowSystemFile = "^(zep/view/GlxBinding|viewer/Display)\\.cpp$";

bool StandsIn(const QString& path, const char* folder) {
    return path.startsWith(QLatin1String(folder));
}

/// How far up a file stands: that of the most specific folder; beyond all where it stands in none.
std::size_t FloorOf(const QString& path) {
    std::size_t found = std::size(Floors);
    for (std::size_t i = 0; i < std::size(Floors); ++i)
        if (StandsIn(path, Floors[i]) &&
            (found == std::size(Floors) || qstrlen(Floors[i]) > qstrlen(Floors[found])))
            found = i;
    return found;
}

const char* ProgramOf(const QString& path) {
    for (const char* program : Programs)
        if (StandsIn(path, program)) return program;
    return nullptr;
}

bool MayInclude(const QString& path, const QString& include) {
    if (const char* program = ProgramOf(path))
        return StandsIn(include, "zep/") || StandsIn(include, program);
    return FloorOf(include) <= FloorOf(path) && FloorOf(include) < std::size(Floors);
}

/// The library's headers stand in angle brackets, as hosts write them; those of programs in quotes.
QStringList Includes(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    static const QRegularExpression include(
        QStringLiteral(
            "^\\s*#\\s*include\\s*(?:<(zep/[^>]+)>|\"(?!zep/)([^\"]+)\"|([<\"][^>\"]+[>\"]))"),
        QRegularExpression::MultilineOption);
    QStringList result;
    for (const auto& match : include.globalMatch(QString::fromUtf8(file.readAll())))
        result << match.captured(1) + match.captured(2) + match.captured(3);
    return result;
}

TSources ReadSources() {
    const QString root = QStringLiteral(ZEP_SOURCE "/");
    TSources sources;
    for (const char* folder : {"zep", "viewer", "tools", "designer", "examples"}) {
        QDirIterator files(root + QLatin1String(folder),
                           {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            sources[path.mid(root.size())] = Includes(path);
        }
    }
    return sources;
}

bool IsSystem(const QString& include) {
    return include.startsWith(QLatin1Char('<'));
}

TLines BrokenArrows(const TSources& sources) {
    TLines broken;
    for (const auto& [path, includes] : sources)
        for (const QString& include : includes)
            if (!IsSystem(include) && !MayInclude(path, include))
                broken.push_back(path.toStdString() + " includes " + include.toStdString());
    return broken;
}

TLines WindowSystemLeaks(const TSources& sources) {
    const QRegularExpression header(QString::fromLatin1(WindowSystemHeader));
    const QRegularExpression home(QString::fromLatin1(WindowSystemFile));
    TLines leaks;
    for (const auto& [path, includes] : sources)
        for (const QString& include : includes)
            if (header.match(include).hasMatch() && !home.match(path).hasMatch())
                leaks.push_back(path.toStdString() + " includes " + include.toStdString());
    return leaks;
}

std::set<QString> PublicHeaders() {
    QFile list(QStringLiteral(ZEP_SOURCE "/zep/PublicHeaders.cmake"));
    if (!list.open(QIODevice::ReadOnly)) return {};
    static const QRegularExpression header(QStringLiteral("^  (\\S+\\.h)$"),
                                           QRegularExpression::MultilineOption);
    std::set<QString> headers;
    for (const auto& match : header.globalMatch(QString::fromUtf8(list.readAll())))
        headers.insert(QStringLiteral("zep/") + match.captured(1));
    return headers;
}

/// What a host cannot include: neither may what it includes, nor may our own programs.
TLines HiddenIncludes(const TSources& sources, const std::set<QString>& publicHeaders) {
    TLines hidden;
    for (const auto& [path, includes] : sources) {
        if (StandsIn(path, "zep/") && !publicHeaders.contains(path)) continue;
        for (const QString& include : includes)
            if (StandsIn(include, "zep/") && !publicHeaders.contains(include))
                hidden.push_back(path.toStdString() + " includes " + include.toStdString());
    }
    return hidden;
}

QString UnitOf(const QString& path) {
    return path.left(path.lastIndexOf(QLatin1Char('.')));
}

/// Include cycles, where a header and its source are one unit.
class TCycleSearch {
public:
    explicit TCycleSearch(const TSources& sources) {
        for (const auto& [path, includes] : sources)
            for (const QString& include : includes)
                if (UnitOf(include) != UnitOf(path)) m_units[UnitOf(path)].insert(UnitOf(include));
    }

    TLines Cycles() {
        for (const auto& [unit, includes] : m_units) Visit(unit);
        return m_cycles;
    }

private:
    void Visit(const QString& unit) {
        const qsizetype start = m_path.indexOf(unit);
        if (start >= 0)
            m_cycles.push_back(
                (m_path.mid(start) << unit).join(QStringLiteral(" > ")).toStdString());
        if (!m_visited.insert(unit).second) return;
        m_path << unit;
        const auto found = m_units.find(unit);
        if (found != m_units.end())
            for (const QString& include : found->second) Visit(include);
        m_path.removeLast();
    }

    std::map<QString, std::set<QString>> m_units;
    std::set<QString> m_visited;
    QStringList m_path;
    TLines m_cycles;
};

TEST(Architecture, RoomsIncludeOnlyWhatStandsBelowThem) {
    const TSources sources = ReadSources();
    ASSERT_GT(sources.size(), 20U);
    EXPECT_THAT(BrokenArrows(sources), testing::IsEmpty());
}

TEST(Architecture, OnlyOneFileKnowsTheWindowSystem) {
    EXPECT_THAT(WindowSystemLeaks(ReadSources()), testing::IsEmpty());
}

TEST(Architecture, PublicHeadersAndProgramsIncludePublicHeadersOnly) {
    const std::set<QString> headers = PublicHeaders();
    ASSERT_GT(headers.size(), 20U);
    EXPECT_THAT(HiddenIncludes(ReadSources(), headers), testing::IsEmpty());
}

TEST(Architecture, UnitsIncludeEachOtherInNoCycle) {
    EXPECT_THAT(TCycleSearch(ReadSources()).Cycles(), testing::IsEmpty());
}

TEST(Architecture, FaultsAreFound) {
    const TSources faults = {
        {"tools/Tool.cpp", {"zep/scene/C.h", "zep/scene/Z.h", "viewer/Main.h"}},
        {"viewer/content/A.cpp", {"viewer/drawing/B.h"}},
        {"zep/framework/A.h", {"<QObject>", "zep/framework/B.h"}},
        {"zep/framework/B.cpp", {"zep/framework/B.h", "zep/scene/C.h", "<X11/Xlib.h>"}},
        {"zep/framework/B.h", {}},
        {"zep/scene/C.h",
         {"zep/framework/A.h", "zep/appearance/materials/M.h", "zep/appearance/effects/L.h"}},
        {"zep/view/GlxBinding.cpp", {"<X11/Xlib.h>", "<GL/glx.h>"}},
        {"zep/view/Panel.h", {"viewer/Main.h", "Local.h", "zep/ZEPClasses.h"}},
    };
    EXPECT_THAT(BrokenArrows(faults),
                testing::ElementsAre("tools/Tool.cpp includes viewer/Main.h",
                                     "viewer/content/A.cpp includes viewer/drawing/B.h",
                                     "zep/framework/B.cpp includes zep/scene/C.h",
                                     "zep/scene/C.h includes zep/appearance/effects/L.h",
                                     "zep/view/Panel.h includes viewer/Main.h",
                                     "zep/view/Panel.h includes Local.h",
                                     "zep/view/Panel.h includes zep/ZEPClasses.h"));
    EXPECT_THAT(WindowSystemLeaks(faults),
                testing::ElementsAre("zep/framework/B.cpp includes <X11/Xlib.h>"));
    EXPECT_THAT(HiddenIncludes(faults, {"zep/framework/A.h", "zep/scene/C.h"}),
                testing::ElementsAre("tools/Tool.cpp includes zep/scene/Z.h",
                                     "zep/framework/A.h includes zep/framework/B.h",
                                     "zep/scene/C.h includes zep/appearance/materials/M.h",
                                     "zep/scene/C.h includes zep/appearance/effects/L.h"));
    EXPECT_THAT(
        TCycleSearch(faults).Cycles(),
        testing::ElementsAre("zep/scene/C > zep/framework/A > zep/framework/B > zep/scene/C"));
}

} // namespace
} // namespace ZEP
