#include <gmock/gmock.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <map>
#include <set>

namespace ZEP {
namespace {

/// What each file includes, by path from the root; angle brackets stay on system headers.
using TSources = std::map<QString, QStringList>;
using TLines = std::vector<std::string>;

struct TArrow {
    const char* Room;
    const char* MayInclude;
};

/// Arrows only down. The scene resolves and applies materials, so it knows these and no other
/// appearance; the panel's parts of view/ stand beside the objects, not below them. Readers make
/// cameras, and group what they make under actors: both stand in view/ but know no window.
constexpr TArrow Arrows[] = {
    {"framework", "framework/"},
    {"scene", "framework/|scene/|appearance/((Face)?(Material|Texture)|DrawRun|SharedMaterials)"},
    {"appearance", "framework/|scene/|appearance/"},
    {"objects", "framework/|scene/|appearance/|objects/"},
    {"view", "framework/|scene/|appearance/|view/"},
    {"converters", "framework/|scene/|appearance/|objects/|view/(Actor|Camera)\\.h|converters/"},
    {"viewer", "framework/|scene/|appearance/|objects/|view/|converters/|viewer/"},
    {"viewer/content", "framework/|scene/|appearance/|objects/|view/Actor|viewer/content/"},
    {"viewer/drawing", "framework/|scene/|appearance/|objects/|view/|viewer/(content|drawing)/"},
    {"viewer/files",
     "framework/|scene/|appearance/|objects/|view/|converters/|viewer/(content|drawing|files)/"},
    {"viewer/window", "framework/|scene/|appearance/|objects/|view/|converters/LineSource\\.h|"
                      "viewer/(content|drawing|files|window)/"},
    {"tools", "framework/"},
    {"designer", "framework/|scene/|appearance/|objects/|view/|converters/|designer/"},
    {"examples", "framework/|scene/|appearance/|objects/|view/|converters/|examples/|ZEP[A-Z]"},
};
constexpr const char* WindowSystemHeader = "^<(X11/|xcb/|GL/glx|EGL/|wayland)";
constexpr const char* WindowSystemFile = "^(view/GlxBinding|viewer/Display)\\.cpp$";

QRegularExpression Whole(const QString& pattern) {
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern));
}

QStringList Includes(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    static const QRegularExpression include(
        QStringLiteral("^\\s*#\\s*include\\s*(?:\"([^\"]+)\"|(<[^>]+>))"),
        QRegularExpression::MultilineOption);
    QStringList result;
    for (const auto& match : include.globalMatch(QString::fromUtf8(file.readAll())))
        result << match.captured(1) + match.captured(2);
    return result;
}

TSources ReadSources() {
    const QString root = QStringLiteral(ZEP_SOURCE "/");
    TSources sources;
    for (const TArrow& arrow : Arrows) {
        QDirIterator files(root + QLatin1String(arrow.Room),
                           {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            sources[path.mid(root.size())] = Includes(path);
        }
    }
    return sources;
}

TLines BrokenArrows(const TSources& sources) {
    TLines broken;
    for (const TArrow& arrow : Arrows) {
        const QRegularExpression allowed =
            Whole(QStringLiteral("<.*>|(%1).*").arg(QLatin1String(arrow.MayInclude)));
        for (const auto& [path, includes] : sources) {
            if (!path.startsWith(QLatin1String(arrow.Room) + QLatin1Char('/'))) continue;
            for (const QString& include : includes)
                if (!allowed.match(include).hasMatch())
                    broken.push_back(path.toStdString() + " includes " + include.toStdString());
        }
    }
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

TEST(Architecture, UnitsIncludeEachOtherInNoCycle) {
    EXPECT_THAT(TCycleSearch(ReadSources()).Cycles(), testing::IsEmpty());
}

TEST(Architecture, FaultsAreFound) {
    const TSources faults = {
        {"framework/A.h", {"<QObject>", "framework/B.h"}},
        {"framework/B.h", {}},
        {"framework/B.cpp", {"framework/B.h", "scene/C.h", "<X11/Xlib.h>"}},
        {"scene/C.h", {"framework/A.h", "appearance/Material.h", "appearance/Light.h"}},
        {"view/GlxBinding.cpp", {"<X11/Xlib.h>", "<GL/glx.h>"}},
        {"view/Panel.h", {"viewer/Main.h", "Local.h"}},
    };
    EXPECT_THAT(BrokenArrows(faults), testing::ElementsAre("framework/B.cpp includes scene/C.h",
                                                           "scene/C.h includes appearance/Light.h",
                                                           "view/Panel.h includes viewer/Main.h",
                                                           "view/Panel.h includes Local.h"));
    EXPECT_THAT(WindowSystemLeaks(faults),
                testing::ElementsAre("framework/B.cpp includes <X11/Xlib.h>"));
    EXPECT_THAT(TCycleSearch(faults).Cycles(),
                testing::ElementsAre("framework/A > framework/B > scene/C > framework/A"));
}

} // namespace
} // namespace ZEP
