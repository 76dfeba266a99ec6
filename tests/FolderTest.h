#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace ZEP {

/// A test with a folder of its own, which goes with it.
class FolderTest : public testing::Test {
protected:
    [[nodiscard]] QString Path(const char* name) const {
        return m_folder.filePath(QString::fromLatin1(name));
    }
    QString Put(const char* name, const QByteArray& contents) {
        QFile file(Path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return file.fileName();
    }
    [[nodiscard]] QByteArray Contents(const char* name) const {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }

private:
    QTemporaryDir m_folder;
};

} // namespace ZEP
