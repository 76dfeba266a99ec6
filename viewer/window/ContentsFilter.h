#pragma once

#include <QString>

#include <optional>
#include <unordered_map>
#include <vector>

namespace ZEP {

class TZEPObject;

/// Which children of which objects a search by name leaves. What is found shows all that is below
/// it; of what only leads there, no other children are shown.
class TContentsFilter {
public:
    /// \param text  to be found in the name or the kind, without case; empty: all is left
    void Search(const std::vector<TZEPObject*>& roots, const QString& text);

    [[nodiscard]] bool Keeps(const TZEPObject& root) const;
    /// How many children are left.
    [[nodiscard]] int CountBelow(const TZEPObject& parent) const;
    /// \param row  below `CountBelow`
    [[nodiscard]] TZEPObject* ChildAt(const TZEPObject& parent, int row) const;
    /// Of a child among those that are left; none where it is not.
    [[nodiscard]] std::optional<int> RowOf(const TZEPObject& parent, const TZEPObject& child) const;
    /// That were found; 0 without a search.
    [[nodiscard]] qint64 Found() const { return m_found; }

private:
    bool Visit(TZEPObject& object);

    QString m_text;
    /// Numbers of the children that are left, ascending. What is found is not in it.
    std::unordered_map<const TZEPObject*, std::vector<int>> m_leading;
    qint64 m_found = 0;
};

} // namespace ZEP
