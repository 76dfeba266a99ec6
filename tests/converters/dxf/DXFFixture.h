#pragma once

#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include "tests/converters/dxf/DXFPairs.h"
#include <zep/converters/dxf/Converter.h>
#include <zep/objects/Point.h>
#include <zep/scene/Scene.h>
#include <zep/scene/XForm.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace ZEP {

using TTexts = std::vector<std::string>;

/// A table of layers: "2 A|62 1", each a record.
inline std::string LayerTable(const TTexts& records) {
    std::string pairs = "0 SECTION|2 TABLES|0 TABLE|2 LAYER|70 9|";
    for (const std::string& record : records) pairs += "0 LAYER|" + record + "|";
    return pairs + "0 ENDTAB|0 ENDSEC|";
}

inline std::string Entities(const std::string& pairs) {
    return "0 SECTION|2 ENTITIES|" + pairs + "|0 ENDSEC|0 EOF";
}

class DXF : public FolderTest {
protected:
    DXF() {
        Root.SetParentComponent(&Scene);
        Converter.SetRoot(&Root);
    }

    void Read(const std::string& pairs) {
        Root.Clear();
        Converter.ReadDXF(Pairs(pairs));
    }
    /// "LWPOLYLINE 3"
    static TTexts TextsOf(const TReadReport& report) {
        TTexts texts;
        for (const auto& entry : report.Entries())
            texts.push_back(entry.Kind.toStdString() + " " + std::to_string(entry.Count));
        return texts;
    }
    [[nodiscard]] TTexts Passed() const { return TextsOf(Converter.Report()); }
    [[nodiscard]] int PointCount() const {
        std::vector<TZEPObject*> points;
        Root.ListChildren(points, {&TZEPPoint::staticMetaObject});
        return static_cast<int>(points.size());
    }

    TZEPScene Scene;
    TZEPObject Root;
    TDXFConverter Converter;
};

} // namespace ZEP
