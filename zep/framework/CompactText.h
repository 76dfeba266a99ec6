#pragma once

#include <zep/Export.h>

#include <QAnyStringView>
#include <QString>

#include <memory>

namespace ZEP {

/// A short text that most of its owners do not have: a pointer, and a block of memory with one byte
/// for each character where Latin-1 has them all.
class ZEP_CORE_EXPORT TCompactText {
public:
    TCompactText() = default;
    TCompactText(const TCompactText&) = delete;
    TCompactText& operator=(const TCompactText& other);

    void Set(QAnyStringView text);
    [[nodiscard]] QString ToString() const { return View().toString(); }
    [[nodiscard]] bool IsSameWithoutCase(const QString& text) const;

private:
    struct THead;

    void Keep(const void* characters, qsizetype count, bool isWide);
    [[nodiscard]] QAnyStringView View() const;

    std::unique_ptr<char[]> m_block; // null: empty
};

} // namespace ZEP
