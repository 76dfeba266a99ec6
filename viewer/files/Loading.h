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

    /// Raises `Exception`. \return false when `progress` cancelled it
    bool Read(const QStringList& files, const TOpenProgress& progress);
    /// Takes the file that was read first of those that are left, and brings it below the scene
    /// with its materials in the scene's library.
    [[nodiscard]] TOpenedFile Show(TZEPScene& scene);
    [[nodiscard]] bool IsEmpty() const { return m_loaded.empty(); }

private:
    struct TLoaded {
        TOpenedFile File;
        std::unique_ptr<TZEPMaterialLibrary> Library;
    };

    bool ReadOne(const QString& name, const TLoadProgress& progress);
    static void Prepare(TLoaded& loaded);

    std::vector<TLoaded> m_loaded;
    bool m_plain;
};

} // namespace ZEP
