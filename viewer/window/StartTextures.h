#pragma once

class QImage;

namespace ZEP {

/// Pictures for the start scene, drawn by formula. Their sides are powers of two and their opposite
/// edges meet.
namespace StartTextures {

/// White stone with grey-blue veins.
[[nodiscard]] QImage Marble();
/// Two woods in squares.
[[nodiscard]] QImage Checkers();
/// Rings about the middle, of dark slate and thin gold.
[[nodiscard]] QImage Stage();

} // namespace StartTextures

} // namespace ZEP
