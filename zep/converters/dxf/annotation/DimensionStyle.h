#pragma once

#include <zep/converters/dxf/Record.h>

#include <map>
#include <string>
#include <unordered_map>

namespace ZEP {

class TDXFHandles;

/// Values of a dimension style, by their group codes in its table.
enum TDXFDimensionValue {
    dvPost = 3,
    dvBlockName = 5, ///< as old drawings name it; newer ones have handles
    dvBlock1Name = 6,
    dvBlock2Name = 7,
    dvLeaderBlockName = 8, ///< the header's alone
    dvTextStyleName = 9,   ///< likewise
    dvScale = 40,
    dvArrowSize = 41,
    dvExtensionOffset = 42,
    dvExtensionBeyond = 44,
    dvRound = 45,
    dvLineBeyond = 46,
    dvExtensionLength = 49,
    dvUpperTolerance = 47,
    dvLowerTolerance = 48,
    dvTextHeight = 140,
    dvCenterMark = 141,
    dvTickSize = 142,
    dvLengthFactor = 144,
    dvTextPosition = 145,
    dvToleranceHeight = 146,
    dvGap = 147,
    dvTolerances = 71,
    dvLimits = 72,
    dvTextInsideHorizontal = 73,
    dvTextOutsideHorizontal = 74,
    dvNoExtension1 = 75,
    dvNoExtension2 = 76,
    dvTextAbove = 77,
    dvZeros = 78,
    dvAngleZeros = 79,
    dvLineInside = 172,
    dvTwoBlocks = 173,
    dvTextInside = 174,
    dvLineColor = 176,
    dvExtensionColor = 177,
    dvTextColor = 178,
    dvAngleDecimals = 179,
    dvDecimals = 271,
    dvToleranceDecimals = 272,
    dvAngleUnit = 275,
    dvUnit = 277,
    dvSeparator = 278,
    dvTextMove = 279,
    dvJustify = 280,
    dvNoLine1 = 281,
    dvNoLine2 = 282,
    dvFixedExtensions = 290,
    dvTextStyle = 340,
    dvLeaderBlock = 341,
    dvBlock = 342,
    dvBlock1 = 343,
    dvBlock2 = 344,
    dvLineWeight = 371,
    dvExtensionWeight = 372
};

/// How a dimension or a leader looks: a style, and what the entity has otherwise.
class TDXFDimensionStyle {
public:
    void Set(int value, std::string_view text) { m_values[value] = text; }

    /// \name `otherwise` where nothing is said
    /// @{
    [[nodiscard]] std::string_view Text(int value) const;
    [[nodiscard]] double Number(int value, double otherwise) const;
    [[nodiscard]] int Integer(int value, int otherwise = 0) const;
    /// @}
    /// Of all sizes; at least a number above 0.
    [[nodiscard]] double Scale() const;
    /// A length that the scale holds for.
    [[nodiscard]] double Size(int value, double otherwise) const {
        return Scale() * Number(value, otherwise);
    }
    [[nodiscard]] double ArrowSize() const { return Size(dvArrowSize, 0.18); }
    [[nodiscard]] double TextHeight() const { return Size(dvTextHeight, 0.18); }
    [[nodiscard]] double Gap() const { return Size(dvGap, 0.09); }
    /// What a handle names, or else a name.
    [[nodiscard]] std::string_view Name(int handleValue, int nameValue,
                                        const TDXFHandles& handles) const;

private:
    std::map<int, std::string_view> m_values;
};

/// The dimension styles of a drawing.
class TDXFDimensionStyles {
public:
    /// An entry of the table. Of entries of one name the first holds.
    void Add(const TDXFRecord& record);
    /// A variable of the header ("$DIMASZ"), for what names no style that is there.
    void SetVariable(std::string_view name, std::string_view text);
    /// That of an entity.
    [[nodiscard]] TDXFDimensionStyle Of(const TDXFRecord& record) const;

private:
    std::unordered_map<std::string, TDXFDimensionStyle> m_byName; // folded
    TDXFDimensionStyle m_ofHeader;
};

} // namespace ZEP
