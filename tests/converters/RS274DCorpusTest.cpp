#include "framework/MappedFile.h"
#include "tests/fuzz/Rs274dInput.h"

#include <QDir>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(RS274DCorpus, EverySeedIsReadInEveryWay) {
    const QDir folder(QStringLiteral(ZEP_SOURCE "/tests/fuzz/corpus/rs274d"));
    const QStringList names = folder.entryList(QDir::Files);
    ASSERT_GE(names.size(), 10);
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const TMappedFile file(folder.filePath(name), name);
        const std::string_view text = file.Text();
        // Every seed also cut off, as a broken copy of a file is.
        for (std::size_t size = 0; size <= text.size(); size += 1 + text.size() / 50)
            ReadAnyRs274d(text.substr(0, size));
        ReadAnyRs274d(text);
    }
}

} // namespace
} // namespace ZEP
