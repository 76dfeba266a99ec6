#pragma once

#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include "tests/converters/threeds/ThreeDSBytes.h"
#include <zep/ZEPClasses.h>
#include <zep/converters/threeds/Converter.h>
#include <zep/objects/Mesh.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace ZEP {

/// A scene, a library and a converter that reads into them.
class ThreeDSTest : public FolderTest {
protected:
    ThreeDSTest() {
        Converter.SetRoot(&Scene);
        Converter.SetMaterials(&Library);
    }

    /// What a reading raises; empty where it raises nothing.
    std::string ErrorOfReading(const std::string& bytes) {
        return ErrorOf([&] { Converter.Read3DS(bytes); });
    }
    std::string ErrorOfLoading() {
        return ErrorOf([&] { Converter.LoadFromFile(); });
    }
    void Load(const std::string& bytes, const char* name = "model.3ds") {
        Converter.SetFileName(Put(name, QByteArray::fromStdString(bytes)));
        EXPECT_EQ(ErrorOfLoading(), "");
    }
    /// "chunk 0x2200 (fog) 1".
    [[nodiscard]] std::vector<std::string> Passed() const {
        std::vector<std::string> texts;
        for (const auto& entry : Converter.Report().Entries())
            texts.push_back((entry.Kind + u' ' + QString::number(entry.Count)).toStdString());
        return texts;
    }
    template <class T>
    T* Child(int index) {
        return index < Scene.GetItemsCount() ? qobject_cast<T*>(Scene.GetItem(index)) : nullptr;
    }
    TZEPMaterial* MaterialAt(int index) { return Library.Materials()->Item(index)->Material(); }

    TZEPScene Scene;
    TZEPMaterialLibrary Library;
    TF3DSConverter Converter;
};

} // namespace ZEP
