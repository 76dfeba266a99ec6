#pragma once

#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

namespace ZEP {

class TZEPObject;

/// Which children of which objects a search leaves. What is found shows all that is below it; of
/// what only leads there, no other children are shown. It holds for the tree as it was searched.
class TZEPSceneFilter {
public:
    using TFinds = std::function<bool(const TZEPObject&)>;

    /// Empty: all is left.
    void Set(TFinds finds) { m_finds = std::move(finds); }
    [[nodiscard]] bool IsActive() const { return static_cast<bool>(m_finds); }
    /// Looks at all that is below the roots, not at these.
    void Search(const std::vector<TZEPObject*>& roots);
    void Forget();

    [[nodiscard]] bool Keeps(const TZEPObject& root) const;
    /// How many children are left.
    [[nodiscard]] int CountBelow(const TZEPObject& parent) const;
    /// \param row  below `CountBelow`
    [[nodiscard]] int IndexOf(const TZEPObject& parent, int row) const;
    /// Of the child at `index` among those that are left; none where it is not.
    [[nodiscard]] std::optional<int> RowOf(const TZEPObject& parent, int index) const;
    /// How many were found; 0 without a search.
    [[nodiscard]] long long Found() const { return m_found; }

private:
    bool Visit(TZEPObject& object);
    [[nodiscard]] std::vector<int> KeptBelow(TZEPObject& object);

    TFinds m_finds;
    /// Numbers of the children that are left, ascending. What is found is not in it.
    std::unordered_map<const TZEPObject*, std::vector<int>> m_leading;
    long long m_found = 0;
};

} // namespace ZEP
