#include <zep/gl/Told.h>

namespace ZEP {

namespace {

constinit TZEPTold Told;

} // namespace

void SetTold(const TZEPTold& told) {
    Told = told;
}

void SetLineWidth(GLfloat pixels) {
    glLineWidth(pixels);
    if (Told.LineWidth) Told.LineWidth(pixels);
}

void SetPointSize(GLfloat pixels) {
    glPointSize(pixels);
    if (Told.PointSize) Told.PointSize(pixels);
}

void TellDotted(bool on) {
    if (Told.Dotted) Told.Dotted(on);
}

void TellBlended(bool on) {
    if (Told.Blended) Told.Blended(on);
}

} // namespace ZEP
