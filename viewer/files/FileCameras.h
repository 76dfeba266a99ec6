#pragma once

#include <QString>

#include <span>
#include <vector>

namespace ZEP {

class TDocument;
class TZEPCamera;
struct TOpenedFile;

/// A camera that stands in a file.
struct TFileCamera {
    QString Name;
    TZEPCamera* Camera;
};

/// In the order of the files and their objects. One without a name is "Camera", and where several
/// have a name the second one is "Name (2)", and so on.
[[nodiscard]] std::vector<TFileCamera> CamerasOf(std::span<const TOpenedFile> files);

/// The view stands where the camera does, and sees through its lens; from there it moves freely.
void LookThrough(const TZEPCamera& camera, TDocument& document);

/// The same for the camera of a name, compared without case. Raises `Exception`, which lists those
/// that there are.
void LookThrough(const QString& name, TDocument& document);

} // namespace ZEP
