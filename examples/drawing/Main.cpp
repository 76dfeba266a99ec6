#include "examples/Window.h"
#include <zep/batch/Batch.h>
#include <zep/converters/dxf/Converter.h>
#include <zep/converters/rs274d/Converter.h>
#include <zep/view/Fitting.h>

#include <cstdio>

using namespace ZEP;

namespace {

template <class Converter>
void Read(TZEPBatch& batch, const QString& fileName) {
    Converter converter;
    converter.SetRoot(&batch);
    converter.SetFileName(fileName);
    converter.SetExtended(true);
    converter.LoadFromFile();
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const bool isGiven = arguments.size() > 1 && !arguments[1].startsWith(QLatin1String("--"));
    const QString file = isGiven ? arguments[1] : QStringLiteral(ZEP_DRAWINGS "/flange.dxf");

    TZEPScene scene;
    auto* batch = Add<TZEPBatch>(&scene);
    try {
        if (file.endsWith(QLatin1String(".dxf"), Qt::CaseInsensitive))
            Read<TDXFConverter>(*batch, file);
        else
            Read<TRS274DConverter>(*batch, file);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    batch->SetEvenLight(true);
    batch->SetShown(TZEPShown{.Background = scene.BackgroundColor()});
    auto* camera = Add<TZEPCamera>(&scene);
    camera->Position()->SetData(0, -1, 2);
    FitCamera(*camera, *batch, 960.0 / 600);
    return ShowScene(*camera, arguments);
}
