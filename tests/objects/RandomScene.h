#pragma once

#include "tests/objects/Dice.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/batch/GatheredClass.h>
#include <zep/framework/Registry.h>

#include <QMetaEnum>

#include <cmath>

namespace ZEP {

/// Pixels whose parts differ by more than `shade`. The white ones are left out: dots of boxes about
/// what is selected, and where dots begin depends in Mesa 22.3 on what was drawn before.
inline int Different(const QImage& a, const QImage& b, int shade) {
    const auto part = [](QRgb pixel, int i) { return static_cast<int>(pixel >> 8 * i & 0xFFU); };
    int count = 0;
    for (int i = 0; i < a.width() * a.height(); ++i) {
        const QRgb first = a.pixel(i % a.width(), i / a.width());
        const QRgb second = b.pixel(i % a.width(), i / a.width());
        if (first == 0xFFFFFFFF || second == 0xFFFFFFFF) continue;
        int most = 0;
        for (int k = 0; k < 3; ++k)
            most = std::max(most, std::abs(part(first, k) - part(second, k)));
        count += most > shade;
    }
    return count;
}

/// Objects of all registered classes in nested transforms, with materials of their own and of a
/// library, textures, selections and outlines.
class TRandomScene {
public:
    explicit TRandomScene(unsigned seed) : TRandomScene(seed, {}) {}
    /// All stands below an object of the class `root`, and is what a batch gathers, of one colour
    /// that no light falls on: it does not matter which of them covers another.
    TRandomScene(unsigned seed, const QString& root) : m_dice(seed), m_isPlain(!root.isEmpty()) {
        Scene.SetMaterialLibrary(&Library);
        for (int i = 0; i < 3; ++i) Fill(*Library.Materials()->Add()->Material());
        Scene.SetSceneAmbientColor(m_isPlain ? clWhite : m_dice.Color());
        Eye.SetOrthographic(m_dice.OneIn(2));
        Eye.SetFOVY(m_dice.Between(10, 60));
        m_dice.Set(Eye.Target(), 3);
        m_dice.Set(Eye.Position(), m_isPlain ? 3 : 6);
        Eye.Position()->SetZ(8);
        Kind = !m_isPlain && m_dice.OneIn(5) ? dkDraft : dkFull;
        if (m_isPlain) m_root = Make(*TClassRegistry::Instance().Find(root), &Scene);
        const int few = 4 + m_dice.Below(24);
        for (int i = seed % 50 == 0 ? 300 : few; i > 0; --i) AddOne(*m_dice.OneOf(m_classes));
    }

    void KeepTextures() {
        for (TZEPTexture* texture : m_textures) texture->SetResident(true);
    }

    TZEPMaterialLibrary Library;
    TZEPCamera Eye;
    TZEPScene Scene;
    TZEPDrawKind Kind;

private:
    using TEntry = TClassRegistry::Entry;

    /// A scene is a root, and a headlight goes with a camera that shows it. Classes of samples
    /// stand in some programs only, and scenes are to be the same in all.
    [[nodiscard]] bool Takes(const TEntry& entry) const {
        if (!std::string_view(entry.Type->className()).starts_with("ZEP::") ||
            !entry.Type->inherits(&TZEPObject::staticMetaObject) ||
            entry.Type->inherits(&TZEPScene::staticMetaObject) ||
            entry.Type->inherits(&TZEPHeadlight::staticMetaObject))
            return false;
        TZEPObject owner;
        return !m_isPlain || TZEPGatheredClass::Of(*Make(entry, &owner)) != TZEPGathered::No;
    }
    [[nodiscard]] std::vector<const TEntry*> Classes() const {
        std::vector<const TEntry*> classes;
        for (const QString& name : TClassRegistry::Instance().ClassNames()) {
            const TEntry* entry = TClassRegistry::Instance().Find(name);
            if (Takes(*entry)) classes.push_back(entry);
        }
        return classes;
    }

    static TZEPObject* Make(const TEntry& entry, TZEPObject* parent) {
        auto* object = static_cast<TZEPObject*>(entry.Make(parent));
        object->SetParentComponent(parent);
        return object;
    }

    void AddOne(const TEntry& entry) {
        if (entry.Type->inherits(&TZEPLight::staticMetaObject) && ++m_lights > 3) return;
        const bool below = !m_objects.empty() && !m_dice.OneIn(3);
        TZEPObject* object = Make(entry, below ? m_dice.OneOf(m_objects) : m_root);
        SetProperties(*object);
        SetParts(*object);
        if (qobject_cast<TZEPLine*>(object) && !m_isPlain) AddRow(*object);
        if (!m_dice.OneIn(4)) m_dice.Set(object->XForm()->Translate(), below ? 1.5 : 5);
        if (m_dice.OneIn(2)) m_dice.Set(object->XForm()->Rotate(), m_isPlain ? 15 : 180);
        if (m_isPlain && qobject_cast<TZEPLabel*>(object)) // what is too small is a line
            object->XForm()->Scale()->SetData(3, 3, 3);
        else if (m_dice.OneIn(3))
            object->XForm()->Scale()->SetData(m_dice.Between(0.5, 2), 0.8, 1.3);
        m_objects.push_back(object);
    }

    /// As many lines in a row as are sent together.
    void AddRow(TZEPObject& first) {
        for (int i = 0; i < 20; ++i) {
            auto* line = Add<TZEPLine>(first.Parent());
            line->SetStyle(static_cast<TZEPLine&>(first).Style());
            line->SetSmooth(false);
            line->SetVisible(!m_rowDice.OneIn(50));
            line->SetColor(m_rowDice.Color());
            line->SetWidth(i < 18 ? 1.0F : 3.0F);
            for (TZEPVertex3* end : {line->P1(), line->P2()}) m_rowDice.Set(end, 1.5);
        }
    }

    void SetProperties(TZEPObject& object) {
        const QMetaObject& type = *object.metaObject();
        for (int i = TZEPObject::staticMetaObject.propertyOffset(); i < type.propertyCount(); ++i)
            if (type.property(i).isWritable() && type.property(i).isStored())
                SetProperty(object, type.property(i));
        if (m_isPlain) return;
        object.SetMaterialIndex(m_dice.OneIn(4) ? m_dice.Below(4) : -1);
        object.SetVisible(!m_dice.OneIn(16));
        object.SetSelected(m_dice.OneIn(6));
        object.SetDrawType(m_dice.OneIn(6) ? dtLine : dtFill);
        if (m_dice.OneIn(3)) Fill(*object.Material());
        // Of dots, all or none: where they begin depends in Mesa 22.3 on what was drawn before.
        std::vector<TPenStyle> styles{psSolid, psInsideFrame, psClear};
        if (auto* shape = qobject_cast<TZEPLineShape*>(&object))
            shape->SetStyle(m_dice.OneOf(styles));
    }

    void SetProperty(TZEPObject& object, const QMetaProperty& property) {
        const int type = property.typeId();
        const auto write = [&](const auto& value) {
            property.write(&object, QVariant::fromValue(value));
        };
        if (property.metaType() == QMetaType::fromType<TColor>()) {
            write(m_isPlain ? clYellow : m_dice.Color());
        } else if (type == QMetaType::Double || type == QMetaType::Float) {
            write(m_dice.Between(0.2, 3));
        } else if (m_isPlain && std::string_view(property.name()) == "ColorVertexes") {
            write(false);
        } else if (std::string_view(property.name()) == "Caption") {
            write(QStringLiteral("Zep"));
        } else if (m_isPlain) {
            return;
        } else if (property.isEnumType()) {
            const QMetaEnum values = property.enumerator();
            const auto value = [&] { return values.value(m_dice.Below(values.keyCount())); };
            write(property.isFlagType() ? value() | value() | value() : value());
        } else if (type == QMetaType::Int) {
            write(2 + m_dice.Below(6));
        } else if (type == QMetaType::Bool) {
            write(m_dice.OneIn(2));
        }
    }

    void SetParts(TZEPObject& object) {
        if (auto* line = qobject_cast<TZEPLine*>(&object)) {
            m_dice.Set(line->P1(), 1.5);
            m_dice.Set(line->P2(), 1.5);
        } else if (auto* polyline = qobject_cast<TZEPPolyline*>(&object)) {
            for (int i = m_dice.Below(6); i-- > 0;) SetVertex(*polyline->Vertexes()->Add());
        } else if (auto* polygon = qobject_cast<TZEPPolygon*>(&object)) {
            AddCorners(*polygon->Vertexes());
        } else if (auto* mesh = qobject_cast<TZEPMesh*>(&object)) {
            AddFaces(*mesh);
        } else if (auto* proxy = qobject_cast<TZEPProxy*>(&object)) {
            if (TZEPObject* target = Other(object)) proxy->SetProxy(target);
        } else if (auto* field = qobject_cast<TZEPHeightField*>(&object)) {
            field->SetOnHeight([](double x, double y) { return x * y; });
        } else if (auto* user = qobject_cast<TZEPUser*>(&object)) {
            SetDrawing(*user);
        } else if (auto* light = qobject_cast<TZEPLight*>(&object)) {
            m_dice.Set(light->Position(), 9);
        }
    }

    void AddCorners(TZEPTexVertexes& vertexes) {
        const int count = m_dice.Below(7);
        for (int i = 0; i < count; ++i) {
            const double angle = 2 * 3.14159 * i / count;
            const double radius = m_dice.Between(0.3, 1.5);
            SetVertex(*vertexes.Add());
            vertexes[i].SetPoint({radius * std::cos(angle), radius * std::sin(angle), 0});
        }
    }

    /// One of their corners may be missing.
    void AddFaces(TZEPMesh& mesh) {
        for (int i = 0; i < 12; ++i) SetVertex(*mesh.Vertexes()->Add());
        for (int i = m_dice.OneIn(3) ? 90 : m_dice.Below(12); i-- > 0;) {
            TZEPFace3CI& face = *mesh.Faces()->Add();
            for (int corner = 0; corner < 3; ++corner) face.SetData(corner, m_dice.Below(13));
            face.SetMaterialIndex(m_dice.Below(4));
        }
    }

    void SetVertex(TZEPVertex3CI& vertex) {
        vertex.SetPoint(m_dice.Place(1.5));
        vertex.SetColor(m_dice.Color());
        if (auto* corner = dynamic_cast<TZEPVertex3TexCI*>(&vertex))
            corner->SetTexCoordQuietly(m_dice.Between(0, 2), m_dice.Between(0, 2));
    }

    /// Not one above the object; null where there is none.
    TZEPObject* Other(const TZEPObject& object) {
        TZEPObject* other = m_objects.empty() ? nullptr : m_dice.OneOf(m_objects);
        const TZEPObject* each = &object;
        while (each && each != other) each = each->Parent();
        return each ? nullptr : other;
    }

    /// A triangle, after another object.
    void SetDrawing(TZEPUser& user) {
        TZEPObject* other = Other(user);
        const bool whole = other && other->GetItemsCount() == 0 && m_dice.OneIn(2);
        user.SetOnDraw([this, other, whole](TZEPUser&, GLenum, bool draft) {
            if (whole)
                other->Draw(Scene, dsAllObjects, draft ? dkDraft : dkFull);
            else if (other)
                other->QuickDraw();
            glBegin(GL_TRIANGLES);
            for (int i = 0; i < 3; ++i) {
                glNormal3f(0, 0, 1);
                glTexCoord2i(i & 1, i >> 1);
                glVertex2i(i & 1, i >> 1);
            }
            glEnd();
        });
    }

    void Fill(TZEPMaterial& material) {
        for (TZEPFaceMaterial* face : {material.FrontFace(), material.BackFace()}) {
            for (int i = 0; i < 4; ++i)
                if (i < 2 || m_dice.OneIn(3)) face->SetColor(i, m_dice.Color());
            face->SetShininess(static_cast<float>(m_dice.Between(0, 60)));
        }
        if (m_dice.OneIn(3)) material.SetTransparency(0.4F);
        if (!m_dice.OneIn(3)) return;
        QImage picture(8, 8, QImage::Format_RGB32);
        for (int i = 0; i < 64; ++i)
            picture.setPixel(i % 8, i / 8, static_cast<QRgb>(m_dice.Below(0x1000000)));
        material.Texture()->Image()->SetImage(picture);
        if (m_dice.OneIn(4)) material.Texture()->SetMinFilter(mifLinearMipmapLinear);
        m_textures.push_back(material.Texture());
    }

    TDice m_dice;
    TDice m_rowDice{1};
    bool m_isPlain;
    TZEPObject* m_root = &Scene;
    std::vector<TZEPTexture*> m_textures;
    std::vector<TZEPObject*> m_objects;
    std::vector<const TEntry*> m_classes = Classes();
    int m_lights = 0;
};

} // namespace ZEP
