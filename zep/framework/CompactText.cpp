#include <zep/framework/CompactText.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <type_traits>

namespace ZEP {

namespace {

bool IsLatin1(QStringView text) {
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() <= 0xFF; });
}

} // namespace

/// A block begins with it, and its characters follow.
struct TCompactText::THead {
    qsizetype Count; // below 0: each of them takes two bytes
};

TCompactText& TCompactText::operator=(const TCompactText& other) {
    if (this != &other) Set(other.View());
    return *this;
}

void TCompactText::Set(QAnyStringView text) {
    text.visit([this](auto view) {
        if constexpr (std::is_same_v<decltype(view), QLatin1String>) {
            Keep(view.data(), view.size(), false);
        } else if constexpr (std::is_same_v<decltype(view), QStringView>) {
            if (!IsLatin1(view)) return Keep(view.data(), view.size(), true);
            const QByteArray narrow = view.toLatin1();
            Keep(narrow.data(), narrow.size(), false);
        } else {
            Set(view.toString());
        }
    });
}

void TCompactText::Keep(const void* characters, qsizetype count, bool isWide) {
    m_block.reset();
    if (count == 0) return;
    const auto bytes = static_cast<std::size_t>(count) * (isWide ? sizeof(char16_t) : 1);
    m_block.reset(new char[sizeof(THead) + bytes]); // NOLINT: not cleared first
    new (m_block.get()) THead{isWide ? -count : count};
    std::memcpy(m_block.get() + sizeof(THead), characters, bytes);
}

QAnyStringView TCompactText::View() const {
    if (!m_block) return QStringView();
    const qsizetype count = reinterpret_cast<const THead*>(m_block.get())->Count;
    const char* text = m_block.get() + sizeof(THead);
    if (count < 0) return QStringView(reinterpret_cast<const char16_t*>(text), -count);
    return QLatin1String(text, count);
}

bool TCompactText::IsSameWithoutCase(const QString& text) const {
    return QAnyStringView::compare(View(), text, Qt::CaseInsensitive) == 0;
}

} // namespace ZEP
