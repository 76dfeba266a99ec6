#include <zep/ZEPRS274D.h>
#include <zep/framework/Exception.h>
#include <zep/framework/FileText.h>

#include <iostream>

using namespace ZEP;

namespace {

std::string Minutes(double seconds) {
    return QString::number(seconds / 60, 'f', 1).toStdString() + " min";
}

std::string Millimetres(double length) {
    return QString::number(length, 'f', 1).toStdString() + " mm";
}

void Print(const TToolPath& path) {
    const TToolPathStatistics statistics = StatisticsOf(path);
    const TPathSums& all = statistics.All;
    std::cout << path.Count() << " moves, " << Minutes(all.Seconds()) << ": cut "
              << Millimetres(all.CutLength) << ", rapid " << Millimetres(all.RapidLength) << '\n';
    if (const std::optional<TZEPBounds>& cuts = statistics.CutBounds)
        for (const std::size_t axis : {0U, 1U, 2U})
            std::cout << "XYZ"[axis] << ' ' << Millimetres(cuts->Min[axis]) << " to "
                      << Millimetres(cuts->Max[axis]) << '\n';
    if (statistics.Holes > 0) std::cout << statistics.Holes << " holes\n";
    for (std::size_t i = 0; i < path.Tools().size(); ++i) {
        const TPathTool& tool = path.Tools()[i];
        const TPathSums& sums = statistics.ByTool[i];
        if (sums.Moves > 0)
            std::cout << "T" << tool.Number << ' ' << tool.Name.toStdString() << ": "
                      << Minutes(sums.Seconds()) << ", cut " << Millimetres(sums.CutLength) << '\n';
    }
}

} // namespace

/// Reads a program as a machine runs it, without a scene, and prints what it does.
int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "usage: zep_statistics PROGRAM\n";
        return 2;
    }
    const QString fileName = QString::fromLocal8Bit(argv[1]);
    const TFileText file(fileName);
    TToolPath path;
    path.SetRapidRate(15'000); // of the machine, millimetres a minute
    TRS274DReport report;
    TRS274DInterpreter({.FileName = fileName}, path, report).Run(file.Text());
    Print(path);
    for (const auto& entry : report.Entries())
        std::cout << "passed over: " << entry.Kind.toStdString() << ", " << entry.Count << '\n';
    return 0;
} catch (const ZEP::Exception& error) {
    std::cerr << error.Message().toStdString() << '\n';
    return 1;
}
