#include <zep/converters/FileConverter.h>

#include <zep/converters/Placing.h>
#include <zep/framework/Exception.h>
#include <zep/scene/Object.h>

namespace ZEP {

TFileConverter::TFileConverter(TComponent* owner, TWords words)
    : TComponent(owner), m_words(std::move(words)) {}

void TFileConverter::SetRoot(TZEPObject* root) {
    if (root == m_root) return;
    if (m_root) m_root->RemoveFreeNotification(this);
    m_root = root;
    if (m_root) m_root->FreeNotification(this);
}

void TFileConverter::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove && component == m_root) m_root = nullptr;
    TComponent::Notification(component, operation);
}

QString TFileConverter::Method(const char* method) const {
    return m_words.ClassName + QLatin1Char('.') + QLatin1StringView(method);
}

void TFileConverter::CheckRoot(const char* method) const {
    if (m_root) return;
    throw Exception(QStringLiteral("Can't load into Root=nil") + m_words.FullStop,
                    {.Method = Method(method)});
}

void TFileConverter::CheckFile(const char* method) const {
    CheckRoot(method);
    if (!m_fileName.isEmpty()) return;
    throw Exception(QStringLiteral("No file name defined") + m_words.FullStop,
                    {.Method = Method(method)});
}

void TFileConverter::ClearRoot(const char* method) const {
    if (m_clearBeforRead) m_root->Clear();
    CheckRoot(method);
}

bool TFileConverter::Finishes(const std::function<bool()>& read) {
    try {
        return read();
    } catch (const TReadingEnd&) {
        return false;
    }
}

TZEPObject& TFileConverter::RootThere() const {
    if (!m_root) throw TReadingEnd();
    return *m_root;
}

TProgress TFileConverter::GuardedProgress() const {
    if (!m_progress) return {};
    return [this, progress = m_progress, root = m_root](qint64 done, qint64 total) {
        return progress(done, total) && m_root == root;
    };
}

} // namespace ZEP
