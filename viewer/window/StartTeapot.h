#pragma once

namespace ZEP {

class TZEPMesh;

/// Makes an empty mesh a teapot as `TZEPTeapot` draws it. That one sends its surface point by point
/// in each draw, which costs too much where shadows are looked for: what is sent so in feedback
/// mode, Mesa 22.3 never gives back.
void MakeTeapot(TZEPMesh& mesh);

} // namespace ZEP
