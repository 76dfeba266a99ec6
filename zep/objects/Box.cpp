#include <zep/objects/Box.h>

#include <zep/framework/Property.h>
#include <zep/objects/Grid.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Vectors.h>

#include <numbers>

namespace ZEP {

namespace {

const TRegisterObject<TZEPBox> RegisteredBox;
const TRegisterObject<TZEPLegendBox> RegisteredLegendBox;

constexpr std::array<TGLArrayf3, 8> Corners{{{-0.5F, -0.5F, -0.5F},
                                             {0.5F, -0.5F, -0.5F},
                                             {0.5F, 0.5F, -0.5F},
                                             {-0.5F, 0.5F, -0.5F},
                                             {-0.5F, -0.5F, 0.5F},
                                             {0.5F, -0.5F, 0.5F},
                                             {0.5F, 0.5F, 0.5F},
                                             {-0.5F, 0.5F, 0.5F}}};

struct TFace {
    TZEPBoxPart Part;
    TGLArrayf3 Normal;
    std::array<unsigned char, 4> Numbers; // of the corners, from 1

    [[nodiscard]] constexpr const TGLArrayf3& Corner(std::size_t i) const {
        return Corners[Numbers[i] - 1U];
    }
};

constexpr std::array<TFace, 6> Faces{{{bpFront, {0, 0, 1}, {5, 6, 7, 8}},
                                      {bpBack, {0, 0, -1}, {2, 1, 4, 3}},
                                      {bpRight, {1, 0, 0}, {6, 2, 3, 7}},
                                      {bpLeft, {-1, 0, 0}, {1, 5, 8, 4}},
                                      {bpTop, {0, 1, 0}, {4, 8, 7, 3}},
                                      {bpBottom, {0, -1, 0}, {5, 1, 2, 6}}}};

constexpr float TextureCorners[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};

void SendFace(const TFace& face, bool draft, bool textured) {
    glBegin(draft ? GL_LINE_LOOP : GL_QUADS);
    glNormal3fv(face.Normal.data());
    for (std::size_t i = 0; i < 4; ++i) {
        if (textured) glTexCoord2fv(TextureCorners[i]);
        glVertex3fv(face.Corner(i).data());
    }
    glEnd();
}

/// What all faces send, as arrays.
struct TBoxArrays {
    std::array<TGLArrayf3, 24> Points{}, Normals{};
    std::array<std::array<float, 2>, 24> Places{}; // in a picture
};

constexpr TBoxArrays MakeArrays() {
    TBoxArrays arrays;
    std::size_t next = 0;
    for (const TFace& face : Faces)
        for (std::size_t i = 0; i < 4; ++i, ++next) {
            arrays.Points[next] = face.Corner(i);
            arrays.Normals[next] = face.Normal;
            arrays.Places[next] = {TextureCorners[i][0], TextureCorners[i][1]};
        }
    return arrays;
}

constexpr TBoxArrays Arrays = MakeArrays();
constexpr TZEPArrayAttributes PlainArrays{.Points = Arrays.Points.front().data(),
                                          .Normals = Arrays.Normals.front().data(),
                                          .LastNormal = Arrays.Normals.back().data()};
constexpr TZEPArrayAttributes TexturedArrays{.Points = PlainArrays.Points,
                                             .Normals = PlainArrays.Normals,
                                             .Places = Arrays.Places.front().data(),
                                             .LastNormal = PlainArrays.LastNormal,
                                             .LastPlace = Arrays.Places.back().data()};

/// How many slices lie along an edge of a face, which runs along one axis.
int SlicesAlong(const TGLArrayd3& edge, const std::array<int, 3>& slices) {
    if (edge[0] != 0) return slices[0];
    return edge[1] != 0 ? slices[1] : slices[2];
}

TGLArrayd3 Edge(const TFace& face, std::size_t to) {
    return ToDoubles(face.Corner(to)) - ToDoubles(face.Corner(0));
}

void SendCells(const TFace& face, const std::array<int, 3>& slices, bool draft, bool textured) {
    const TGLArrayd3 across = Edge(face, 1);
    const TGLArrayd3 up = Edge(face, 3);
    const int columns = SlicesAlong(across, slices);
    const int rows = SlicesAlong(up, slices);
    SendGrid(columns, rows, {.Draft = draft, .Textured = textured}, [&](int i, int j) {
        TGridPoint point;
        point.S = static_cast<double>(i) / columns;
        point.T = static_cast<double>(j) / rows;
        point.Point = ToDoubles(face.Corner(0)) + across * point.S + up * point.T;
        return point;
    });
}

} // namespace

void TZEPBox::SetSlices(int index, int slices) {
    if (index < 0 || index > 2) return;
    if (Change(m_slices[static_cast<std::size_t>(index)], CellCount(slices))) Invalidate(this);
}

void TZEPBox::SetParts(TZEPBoxParts parts) {
    if (Change(m_parts, parts)) Invalidate(this);
}

double TZEPBox::GetRadius() const {
    return std::numbers::sqrt2;
}

void TZEPBox::DrawSpecific(GLenum, bool draft) {
    const bool textured = !draft && HasTexture();
    TZEPDrawRun& run = DrawFrame().Run;
    // Between neighbours arrays cost two thirds of what single calls do.
    if (run.Waits() && !draft && !Sliced() && m_parts == AllParts) {
        const TZEPDrawRun::AttributeScope arrays(run, textured ? TexturedArrays : PlainArrays);
        return glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(Arrays.Points.size()));
    }
    run.OpenSurface();
    Send(draft, textured);
}

void TZEPBox::Send(bool draft, bool textured) const {
    for (const TFace& face : Faces) {
        if (!m_parts.testFlag(face.Part)) continue;
        if (Sliced())
            SendCells(face, m_slices, draft, textured);
        else
            SendFace(face, draft, textured);
    }
}

} // namespace ZEP
