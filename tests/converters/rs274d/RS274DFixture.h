#pragma once

#include "tests/ErrorOf.h"
#include <zep/converters/rs274d/Converter.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Line.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace ZEP {

using TTexts = std::vector<std::string>;

inline std::string PlaceText(const TGLArrayd3& point) {
    std::string text;
    for (const double value : point) {
        const double rounded = std::round(value * 1e6) / 1e6;
        if (!text.empty()) text += ' ';
        text += QString::number(rounded == 0 ? 0 : rounded).toStdString();
    }
    return text;
}

/// "TZEPLine 0 0 0 > 1 2 0 ffffff @Line 1".
inline std::string DescribeMove(TZEPObject* object) {
    QString text = object->ClassName() + u' ';
    if (auto* line = qobject_cast<TZEPLine*>(object)) {
        text += QString::fromStdString(PlaceText(line->P1()->Data()) + " > " +
                                       PlaceText(line->P2()->Data()));
        if (line->Style() != psSolid) text += QStringLiteral(" style%1").arg(line->Style());
    }
    if (auto* point = qobject_cast<TZEPPoint*>(object))
        text += QString::fromStdString(PlaceText(point->P()->Data())) +
                QStringLiteral(" w%1").arg(point->Width());
    if (auto* arc = qobject_cast<TZEPArc*>(object))
        text += QStringLiteral("%1 x%2 %3..%4")
                    .arg(QString::fromStdString(PlaceText(arc->XForm()->Translate()->Data())))
                    .arg(arc->XForm()->Scale()->X())
                    .arg(arc->StartAngle())
                    .arg(arc->EndAngle());
    if (auto* polyline = qobject_cast<TZEPPolyline*>(object))
        text += QStringLiteral("%1 points").arg(polyline->Vertexes()->Count());
    text += QStringLiteral(" %1 @").arg(object->Color().Value, 6, 16, QLatin1Char('0'));
    return (text + object->Ident()).toStdString();
}

class RS274D : public testing::Test {
protected:
    RS274D() { Converter.SetRoot(&Root); }

    TTexts Objects() {
        TTexts texts;
        for (int i = 0; i < Root.GetItemsCount(); ++i)
            texts.push_back(DescribeMove(Root.GetItem(i)));
        return texts;
    }
    TTexts Read(std::string_view text) {
        Root.Clear();
        Converter.ReadNC(text);
        return Objects();
    }
    std::string ErrorOfLoading() {
        return ErrorOf([&] { Converter.LoadFromFile(); });
    }
    /// A file of the given content in a folder of the test's own.
    QString Written(const QString& name, const QByteArray& content) {
        QFile file(Folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    static QByteArray Content(const QString& name) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
    static QString Data(const char* name) {
        return QStringLiteral(ZEP_TEST_DATA "/nc/") + QLatin1String(name);
    }

    QTemporaryDir Folder;
    TZEPScene Scene;
    TZEPObject Root{&Scene};
    TRS274DConverter Converter;
};

} // namespace ZEP
