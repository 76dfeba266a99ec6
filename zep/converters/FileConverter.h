#pragma once

#include <zep/Export.h>
#include <zep/converters/Progress.h>
#include <zep/framework/Component.h>

namespace ZEP {

class TZEPObject;

/// What the readers of files share: where they read into, from which file, and how the host follows
/// and ends it. Each reader publishes these properties itself, in its own order.
///
/// It may read on any thread into a tree that stands in no scene: readers of two trees share
/// nothing.
///
/// Defaults: no root, no file, `ClearBeforRead` set.
class ZEP_CORE_EXPORT TFileConverter : public TComponent {
    Q_OBJECT
public:
    [[nodiscard]] TZEPObject* Root() const { return m_root; }
    /// Owner and parent of what is read; becomes null when it is removed or freed.
    void SetRoot(TZEPObject* root);
    [[nodiscard]] bool ClearBeforRead() const { return m_clearBeforRead; }
    /// Frees the children of `Root` before a file is read.
    void SetClearBeforRead(bool clear) { m_clearBeforRead = clear; }
    [[nodiscard]] const QString& FileName() const { return m_fileName; }
    void SetFileName(const QString& fileName) { m_fileName = fileName; }

    /// Not published: called every 64 kilobytes or so while a file is read; one that is set
    /// meanwhile, from the next reading on. It may do anything but free the converter.
    void SetProgress(TProgress progress) { m_progress = std::move(progress); }
    /// The last reading was cancelled by the progress call.
    [[nodiscard]] bool Cancelled() const { return m_cancelled; }

protected:
    /// How a reader's messages begin and end: each has its published words.
    struct TWords {
        QString ClassName;
        QString FullStop;
    };

    TFileConverter(TComponent* owner, TWords words);
    void Notification(TComponent* component, TOperation operation) override;

    /// "TDXFConverter.LoadFromFile"
    [[nodiscard]] QString Method(const char* method) const;
    /// Raises `Exception` without a root.
    void CheckRoot(const char* method) const;
    /// Raises `Exception` without a root or a file name.
    void CheckFile(const char* method) const;
    /// Frees the children of the root before a file is read, where that is asked for. Raises
    /// `Exception` when a handler of what then happens frees the root, too.
    void ClearRoot(const char* method) const;
    /// What `read` answers; false where it has raised `TReadingEnd`.
    [[nodiscard]] static bool Finishes(const std::function<bool()>& read);
    /// What is read into. Raises `TReadingEnd` where a handler has taken it away.
    [[nodiscard]] TZEPObject& RootThere() const;
    /// The host's call. It may free or replace the root while it is asked: then there is nothing to
    /// read into, and the reading ends.
    [[nodiscard]] TProgress GuardedProgress() const;
    void SetCancelled(bool cancelled) { m_cancelled = cancelled; }

private:
    TWords m_words;
    QString m_fileName;
    TZEPObject* m_root = nullptr;
    TProgress m_progress;
    bool m_clearBeforRead = true;
    bool m_cancelled = false;
};

} // namespace ZEP
