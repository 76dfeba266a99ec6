#pragma once

#include <QString>
#include <QStringList>

namespace ZEP {

/// Finds the pictures of a model beside it. Names in models come from elsewhere: in capitals, cut
/// to eight and three letters, with folders of another machine. Whatever a name says, only files of
/// the model's own folder are found: ordinary ones, and links to such.
class TTextureFolder {
public:
    /// The folder of that file; where it is empty, no folder, and nothing is found.
    explicit TTextureFolder(const QString& modelFile);

    /// The path of the picture where it stands under that name: what is behind the last `/`, `\` or
    /// `:` of it, in the folder.
    [[nodiscard]] QString PathOf(const QString& name) const;
    /// The path of a file that is there: of that name, else of that name in another case, else the
    /// one that the name is the short form of ("TRUNCA~1.JPG" or "TRUNCATE.JPG" of
    /// "TruncatedName.jpg"); empty without one.
    [[nodiscard]] QString Find(const QString& name);

private:
    [[nodiscard]] QString FindOther(const QString& file);

    QString m_folder; // with a slash at its end
    QStringList m_files;
    bool m_listed = false;
};

} // namespace ZEP
