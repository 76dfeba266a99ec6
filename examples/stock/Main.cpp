#include "examples/Window.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPRS274D.h>
#include <zep/ZEPStock.h>
#include <zep/scene/Vectors.h>

#include <QFile>

#include <algorithm>

using namespace ZEP;

namespace {

QString ProgramIn(const QStringList& arguments) {
    const bool isNamed = arguments.size() > 1 && !arguments[1].startsWith(QLatin1String("--"));
    return isNamed ? arguments[1] : QStringLiteral(ZEP_PARTS "/bracket.nc");
}

} // namespace

/// Cuts the block that a program is made for, and shows what is left of it:
/// `zep_stock [PROGRAM] [--picture OUT.png]`.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QFile file(ProgramIn(QApplication::arguments()));
    if (!file.open(QIODevice::ReadOnly)) qFatal("Can't read %s", qPrintable(file.fileName()));
    TToolPath path;
    TRS274DReport report;
    TRS274DInterpreter({.FileName = file.fileName()}, path, report)
        .Run(file.readAll().toStdString());

    std::vector<TStockTool> tools; // as the program's comments tell them
    for (const TPathTool& tool : path.Tools()) tools.push_back(GuessTool(tool).Tool);
    const std::optional<TStockBlock> block = GuessBlock(path, tools);
    if (!block) qFatal("The program cuts nothing.");
    const auto stock = std::make_shared<TStock>(*block);
    TStockRun run(*stock, path, tools);
    run.GoTo(path.Count()); // to any move, also back
    for (const TRapidCut& cut : run.RapidCuts())
        qWarning("Line %lld cuts %g mm deep in rapid", static_cast<long long>(cut.Line), cut.Depth);

    TZEPScene scene;
    scene.SetBackgroundColor(TColor{0x302820});
    auto* workpiece = Add<TZEPWorkpiece>(&scene);
    workpiece->SetStock(stock);
    auto* sun = Add<TZEPLight>(&scene);
    sun->SetColor(TColor{0x909090});
    sun->Position()->SetData(-1, -0.6, 2);
    auto* camera = Add<TZEPCamera>(&scene);
    const TGLArrayd3 center = Middle(stock->Min(), stock->Max());
    const double away = Distance(stock->Min(), stock->Max());
    camera->Position()->SetData(center[0] + 0.3 * away, center[1] - away, center[2] + away);
    camera->Target()->SetDataQuietly(center);
    camera->FitTo(stock->Min(), stock->Max(), 1.6);
    return ShowScene(*camera, QApplication::arguments());
}
