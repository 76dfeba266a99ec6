#pragma once

#include <initializer_list>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>
#include <utility>

namespace ZEP {

/// What is known of classes of objects; `Value{}` of all others.
template <class Value>
class TZEPClassTable {
public:
    TZEPClassTable(std::initializer_list<std::pair<const std::type_index, Value>> values)
        : m_values(values) {}

    void Set(const std::type_info& type, Value value) {
        m_values[type] = value;
        ++m_changes;
    }
    void Remove(const std::type_info& type) {
        m_values.erase(type);
        ++m_changes;
    }
    // Neighbours are mostly of one class: the name of a million would be hashed in vain.
    [[nodiscard]] Value Of(const std::type_info& type) const {
        struct TLast {
            const TZEPClassTable* Table;
            const std::type_info* Type;
            int Changes;
            Value Known;
        };
        thread_local TLast last{};
        if (last.Table == this && last.Type == &type && last.Changes == m_changes)
            return last.Known;
        const auto found = m_values.find(type);
        last = {this, &type, m_changes, found == m_values.end() ? Value{} : found->second};
        return last.Known;
    }

private:
    std::unordered_map<std::type_index, Value> m_values;
    int m_changes = 0;
};

} // namespace ZEP
