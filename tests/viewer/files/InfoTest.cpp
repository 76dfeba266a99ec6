#include "viewer/files/Info.h"

#include "tests/Cases.h"
#include "tests/objects/TextScene.h"
#include <zep/ZEPRS274D.h>

#include <QJsonDocument>

namespace ZEP {
namespace {

/// Of what stands below the root of a file, as text and as JSON.
TEST(Info, TellsWhatIsWrittenDown) {
    ExpectCases("viewer/info.txt", [](const TCase& c) {
        TTextScene scene("object S: TZEPScene object B: TZEPBatch " + c.Input + " end end");
        TOpenedFile file;
        file.Name = QStringLiteral("part.nc");
        file.Format = TFileFormat::RS274D;
        file.Seconds = 0.25;
        file.Root = &dynamic_cast<TZEPBatch&>(scene.Object("B"));
        if (c.Name.find("model") != std::string::npos) {
            file.Format = TFileFormat::F3DS;
            file.Materials = 7;
        }
        if (c.Name.find("Fanuc") != std::string::npos) file.Dialect = QStringLiteral("Fanuc");
        if (c.Name.find("messages") != std::string::npos)
            file.Messages = {{QStringLiteral("code G68"), 3, 12},
                             {QStringLiteral("texture %1.png not found"), 2, 0}};
        const TFileInfo info = InfoOf(file);
        return ToText(info).toStdString() +
               QJsonDocument(ToJson(info)).toJson(QJsonDocument::Compact).toStdString();
    });
}

/// With its path.
TEST(Info, TellsOfAProgramWhatAMachinistAsks) {
    ExpectCases("viewer/program.txt", [](const TCase& c) {
        TTextScene scene("object S: TZEPScene object B: TZEPBatch end end");
        TOpenedFile file;
        file.Name = QStringLiteral("part.nc");
        file.Format = TFileFormat::RS274D;
        file.Root = &dynamic_cast<TZEPBatch&>(scene.Object("B"));
        file.Path = std::make_shared<TToolPath>();
        TRS274DReport report;
        TRS274DInterpreter({}, *file.Path, report).Run(c.Input);
        const TFileInfo info = InfoOf(file);
        return ToText(info).toStdString() +
               QJsonDocument(ToJson(info).value(QLatin1String("program")).toObject())
                   .toJson(QJsonDocument::Compact)
                   .toStdString();
    });
}

} // namespace
} // namespace ZEP
