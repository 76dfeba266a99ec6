#pragma once

#include <QtGlobal>

#include <functional>

namespace ZEP {

class TZEPMaterialLibrary;
struct TOpenedFile;

/// Called now and then with what is done and the whole; false cancels.
using TLoadProgress = std::function<bool(qint64 done, qint64 total)>;

/// Reads the file, whose name and format are known, into a root of its own, and tells what was
/// passed over. Materials are appended to `materials`, to which what is read refers. Raises
/// `Exception`, which names the file, and the line where there is one; the root may be there then.
/// \param plain  programs and drawings by the bare rules of their formats
void ReadFile(TOpenedFile& file, TZEPMaterialLibrary& materials, bool plain,
              const TLoadProgress& progress);

} // namespace ZEP
