#pragma once

#include <GL/gl.h>

#include <array>

namespace ZEP {

/// How deep OpenGL's stacks are when a frame begins, to bring a frame to an end that was left in
/// its middle.
class TZEPFrameState {
public:
    TZEPFrameState();

    /// Closes what is open, pops what is above, and takes back what passes switch on.
    void Restore() const;

private:
    static constexpr std::array MatrixModes{GL_PROJECTION, GL_TEXTURE, GL_MODELVIEW};

    GLint m_attributes;
    GLint m_clientAttributes;
    std::array<GLint, MatrixModes.size()> m_matrices{};
};

} // namespace ZEP
