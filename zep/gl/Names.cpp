#include <zep/gl/Names.h>

#include <vector>

namespace ZEP {

TBlendEquation BlendEquationEXT = nullptr;
TBlendColor BlendColorEXT = nullptr;
bool StencilWrapEXT = false;

namespace {

struct Waiting {
    std::vector<GLuint> Lists;
    std::vector<GLuint> Textures;
    bool ContextIsCurrent = false;
};

Waiting& Names() {
    static Waiting names;
    return names;
}

} // namespace

void ReleaseDisplayList(GLuint name) {
    if (name == 0) return;
    if (Names().ContextIsCurrent) return glDeleteLists(name, 1);
    Names().Lists.push_back(name);
}

void ReleaseTexture(GLuint name) {
    if (name == 0) return;
    if (Names().ContextIsCurrent) return glDeleteTextures(1, &name);
    Names().Textures.push_back(name);
}

void DeleteReleasedNames() {
    for (const GLuint list : Names().Lists) glDeleteLists(list, 1);
    Names().Lists.clear();
    if (Names().Textures.empty()) return;
    glDeleteTextures(static_cast<GLsizei>(Names().Textures.size()), Names().Textures.data());
    Names().Textures.clear();
}

void SetContextIsCurrent(bool current) {
    Names().ContextIsCurrent = current;
}

} // namespace ZEP
