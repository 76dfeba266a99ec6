#pragma once

#include "viewer/files/OpenedFile.h"
#include "viewer/files/Reader.h"
#include <zep/batch/Shown.h>

#include <functional>
#include <memory>
#include <optional>

namespace ZEP {

class TZEPScene;

/// Files that are read but not yet shown. What is not taken goes away with it.
class TLoading {
public:
    /// \param shown  how files are shown at first: all that takes is made ready; none: nothing is
    TLoading(bool plain, const std::optional<TZEPShown>& shown) : m_plain(plain), m_shown(shown) {}
    ~TLoading();
    Q_DISABLE_COPY_MOVE(TLoading)

    /// Raises `Exception` where none of the files can be read. \return false when `progress`
    /// cancelled it
    bool Read(const QStringList& files, const TOpenProgress& progress);
    /// Those of them that could not be read.
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
    void Fail(const QString& name, const std::exception& error);
    [[nodiscard]] bool Prepare(TLoaded& loaded, const std::function<bool(double)>& progress) const;

    std::vector<TLoaded> m_loaded;
    std::vector<TFailure> m_failures;
    bool m_plain;
    std::optional<TZEPShown> m_shown;
};

} // namespace ZEP
