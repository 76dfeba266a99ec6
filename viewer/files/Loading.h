#pragma once

#include "viewer/files/OpenedFile.h"
#include "viewer/files/Reader.h"

#include <memory>

namespace ZEP {

class TZEPScene;

/// Files that are read but not yet shown. What is not taken goes away with it.
class TLoading {
public:
    explicit TLoading(bool plain) : m_plain(plain) {}
    ~TLoading();
    Q_DISABLE_COPY_MOVE(TLoading)

    /// Raises `Exception` where none of the files can be read. \return false when `progress`
    /// cancelled it
    bool Read(const QStringList& files, const TOpenProgress& progress);
    /// The others of them.
    [[nodiscard]] const std::vector<TFailure>& Failures() const { return m_failures; }
    /// Takes the file that was read first of those that are left, and brings it below the scene
    /// with its materials in the scene's library.
    [[nodiscard]] TOpenedFile Show(TZEPScene& scene);
    [[nodiscard]] bool IsEmpty() const { return m_loaded.empty(); }
    /// The name of the file that is taken next.
    [[nodiscard]] const QString& NextName() const { return m_loaded.front().File.Name; }

private:
    struct TLoaded {
        TOpenedFile File;
        std::unique_ptr<TZEPMaterialLibrary> Library;
    };

    bool ReadOrFail(const QString& name, const TLoadProgress& progress);
    bool ReadOne(TLoaded& loaded, const QString& name, const TLoadProgress& progress) const;
    void Fail(const QString& name, const QString& error);
    static void Prepare(TLoaded& loaded);

    std::vector<TLoaded> m_loaded;
    std::vector<TFailure> m_failures;
    bool m_plain;
};

} // namespace ZEP
