#pragma once

#include <QString>

#include <span>
#include <vector>

namespace ZEP {

class TZEPLayout;
struct TOpenedFile;

/// A sheet that stands in a file.
struct TFileLayout {
    QString Name;
    TZEPLayout* Layout;
    QString File; ///< its name
};

/// In the order of the files and of the tabs of each. One without a name is "Layout", and where
/// several have a name the second one is "Name (2)", and so on.
[[nodiscard]] std::vector<TFileLayout> LayoutsOf(std::span<const TOpenedFile> files);

/// The sheet of that name, compared without case; null for "Model". Raises `Exception`, which lists
/// those that there are. \param files  at least one
[[nodiscard]] TZEPLayout* LayoutNamed(const QString& name, std::span<const TOpenedFile> files);

} // namespace ZEP
