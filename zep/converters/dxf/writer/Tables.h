#pragma once

#include <zep/framework/Color.h>

#include <QHash>
#include <QString>

#include <deque>
#include <vector>

namespace ZEP {

class TDXFPairs;
class TZEPDashPattern;
class TZEPObject;

/// A layer that is written.
struct TDXFWrittenLayer {
    QString Name;
    TColor Color = clWhite;
    bool Visible = true;
};

/// A line type of an entity.
struct TDXFUsedLineType {
    QString Name;
    double Scale = 1; ///< of the lengths in the table
};

/// Names that a drawing tells apart, without regard to case.
class TDXFFreeNames {
public:
    /// The name, without what names may not have, or with a number behind it where it is taken.
    /// \param otherwise  in place of an empty one
    QString Take(const QString& name, const QString& otherwise);

private:
    QHash<QString, int> m_next; ///< number, by folded name
};

/// Layers and line types of a drawing that is written, by names that drawings may have.
class TDXFWrittenTables {
public:
    /// \param actor    null for what stands on none, which is on layer "0"
    /// \param visible  with what it stands under
    const TDXFWrittenLayer& LayerOf(const TZEPObject* actor, bool visible);
    /// \param scale  of the entity
    TDXFUsedLineType LineTypeOf(const TZEPDashPattern& pattern, double scale);

    [[nodiscard]] std::size_t Count() const { return m_layers.size() + m_lineTypes.size(); }
    /// The table with its records, which have handles from `first` on.
    /// \return  the next handle
    quint64 WriteLineTypes(TDXFPairs& pairs, quint64 first) const;
    quint64 WriteLayers(TDXFPairs& pairs, quint64 first) const;

private:
    struct TLineType {
        QString Name;
        std::vector<double> Parts;
    };

    std::size_t NumberOf(const QString& ident);

    std::deque<TDXFWrittenLayer> m_layers;
    TDXFFreeNames m_layerNames, m_lineTypeNames;
    QHash<const TZEPObject*, std::size_t> m_byActor;
    QHash<QString, std::size_t> m_byIdent; ///< folded, as the objects have it
    std::deque<TLineType> m_lineTypes;
    QHash<QString, std::size_t> m_byForm; ///< name and proportions
};

/// The colour number that looks most like the colour.
[[nodiscard]] int DXFPaletteNumber(TColor color);
/// Writes a colour: its number, and the true one where that is another.
void WriteDXFColor(TDXFPairs& pairs, TColor color, bool isOff = false);

} // namespace ZEP
