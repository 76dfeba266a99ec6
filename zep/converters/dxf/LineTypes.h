#pragma once

#include <zep/converters/dxf/Record.h>
#include <zep/objects/DashPattern.h>

#include <QHash>

#include <map>
#include <string>
#include <unordered_map>

namespace ZEP {

class TDXFTextDecoder;
class TZEPObject;

/// How lines are broken up.
struct TDXFLineType {
    QString Name{};
    std::vector<double> Parts{}; ///< dashes, above 0, gaps, below 0, and dots
    bool HasTexts = false;       ///< or shapes between them, which are not drawn
};

/// The line types of a drawing that break lines up, and which layers have one.
class TDXFLineTypes {
public:
    /// Of all line types ($LTSCALE).
    void SetScale(double scale);
    /// An entry of the table. Of entries of one name the first holds.
    void Add(const TDXFRecord& record, const TDXFTextDecoder& text);
    /// \param name  outlives this
    void SetOfLayer(const TZEPObject* layer, std::string_view name) { m_ofLayers[layer] = name; }

    [[nodiscard]] bool AreThere() const { return !m_byName.empty(); }
    /// Something is drawn in one of them.
    [[nodiscard]] bool AreUsed() const { return !m_patterns.empty(); }
    /// Null for what is solid.
    [[nodiscard]] const TDXFLineType* Find(std::string_view name) const;
    [[nodiscard]] const TDXFLineType* OfLayer(const TZEPObject* layer) const;
    /// Null for what breaks nothing up.
    [[nodiscard]] std::shared_ptr<const TZEPDashPattern> PatternOf(const TDXFLineType& type,
                                                                   double scale);

private:
    using TKey = std::pair<const TDXFLineType*, double>;

    std::unordered_map<std::string, TDXFLineType> m_byName; // folded
    QHash<const TZEPObject*, std::string_view> m_ofLayers;
    std::map<TKey, std::shared_ptr<const TZEPDashPattern>> m_patterns;
    double m_scale = 1;
};

} // namespace ZEP
