#pragma once

#include <zep/framework/stream/Reader.h>
#include <zep/framework/stream/StreamFile.h>
#include <zep/framework/stream/Writer.h>
#include <zep/scene/Scene.h>

#include <QBuffer>

#include <cstdlib>

namespace ZEP {

inline void Require(bool condition) {
    if (!condition) std::abort();
}

/// A stream in another form.
inline QByteArray ConvertStream(TStreamForm from, std::string_view data, TStreamForm to) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    CopyStream(*MakeSource(from, data), *MakeSink(to, buffer));
    return buffer.data();
}

inline std::string_view ViewOf(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// What is whole in one form is whole in the other, and from then on nothing changes any more.
inline void ConvertAnyStream(TStreamForm form, std::string_view data) {
    const QByteArray text = ConvertStream(form, data, TStreamForm::Text);
    const QByteArray binary = ConvertStream(form, data, TStreamForm::Binary);
    Require(ConvertStream(TStreamForm::Text, ViewOf(text), TStreamForm::Binary) == binary);
    Require(ConvertStream(TStreamForm::Binary, ViewOf(binary), TStreamForm::Text) == text);
}

inline QByteArray Saved(TStreamForm form, TZEPObject& object) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const auto sink = MakeSink(form, buffer);
    TWriter writer(*sink);
    object.SaveToWriter(writer);
    return buffer.data();
}

inline void Load(TStreamForm form, std::string_view data, TZEPObject& object) {
    const auto source = MakeSource(form, data);
    TReader reader(*source);
    object.LoadFromReader(reader);
}

/// What was loaded can be saved, and what was saved is whole.
inline void LoadAnyStream(TStreamForm form, std::string_view data) {
    TZEPScene scene;
    Load(form, data, scene);
    scene.SetAnimation(false);
    const QByteArray saved = Saved(TStreamForm::Binary, scene);
    CheckStructure(*MakeSource(TStreamForm::Binary, ViewOf(saved)));
}

/// Reads any bytes as a stream of that form.
inline void ReadAnyStream(TStreamForm form, std::string_view data) {
    try {
        ConvertAnyStream(form, data);
    } catch (const Exception&) {
        // errors are told, never crashes
    }
    try {
        LoadAnyStream(form, data);
    } catch (const Exception&) {
    }
}

} // namespace ZEP
