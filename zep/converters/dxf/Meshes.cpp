#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/Curves.h>
#include <zep/converters/dxf/Frame.h>
#include <zep/objects/Mesh.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace ZEP {

namespace {

/// Of group 70 of a polyline.
enum TPolylineFlag {
    pfClosed = 1,
    pfSpatial = 8,
    pfMesh = 16,
    pfClosedColumns = 32,
    pfPolyface = 64,
    pfRunsOn = 128
};
/// Of group 70 of a vertex.
enum TVertexFlag { vfFrame = 16, vfPlace = 64, vfFace = 128 };

using TFace = std::array<int, 3>; // from 0

/// What stands between a POLYLINE and its SEQEND. Objects are made when all of it is there: while
/// it is read, the host may free any object.
struct TVertexes {
    TDXFBulgeVertex Head; ///< what vertexes have that do not say it themselves
    std::vector<TDXFBulgeVertex> Places{};
    std::vector<TFace> Faces{};
    int ControlPoints = 0;
};

/// Corners count from 1; a hidden edge makes them negative.
int Corner(const TDXFRecord& record, int code) {
    const int number = record.Integer(code);
    return number == std::numeric_limits<int>::min() ? 0 : std::abs(number);
}

/// A face of four corners is two triangles.
void TakeFace(TDXFBuilder& builder, const TDXFRecord& record, TVertexes& vertexes) {
    const int a = Corner(record, 71), b = Corner(record, 72), c = Corner(record, 73);
    const int d = Corner(record, 74);
    if (a == 0 || b == 0 || c == 0)
        return builder.Drawing.Report.Add("POLYLINE", TDXFReport::TReason::NoCorners,
                                          record.Line());
    vertexes.Faces.push_back({a - 1, b - 1, c - 1});
    if (d > 0) vertexes.Faces.push_back({a - 1, c - 1, d - 1});
}

/// The control points of a curve that was smoothed stand beside the curve's.
void TakeVertex(TDXFBuilder& builder, const TDXFRecord& record, TVertexes& vertexes) {
    if (record.Flag(70, vfFace) && !record.Flag(70, vfPlace))
        return TakeFace(builder, record, vertexes);
    if (record.Flag(70, vfFrame)) {
        ++vertexes.ControlPoints;
        return;
    }
    const TDXFBulgeVertex& head = vertexes.Head;
    vertexes.Places.push_back({record.Point(10, head.Point), record.Number(42),
                               record.Number(40, head.StartWidth),
                               record.Number(41, head.EndWidth)});
}

/// False where the text ends before the polyline.
bool ReadVertexes(TDXFBuilder& builder, TVertexes& vertexes) {
    TDXFTags& tags = builder.Drawing.Tags;
    TDXFRecord record;
    while (tags.NextGroupCode() == 0) {
        if (tags.ValStr() != "VERTEX") {
            tags.go_back_to_last();
            return true;
        }
        if (!record.Read(tags)) return false;
        TakeVertex(builder, record, vertexes);
    }
    return false;
}

/// Rows and columns of places, two triangles between each four.
class TGridFaces {
public:
    TGridFaces(int rows, int columns) : m_columns(columns), m_rows(rows) {}

    void Append(bool closedRows, bool closedColumns, std::vector<TFace>& faces) const {
        for (int i = 0; i < m_rows - (closedRows ? 0 : 1); ++i)
            for (int k = 0; k < m_columns - (closedColumns ? 0 : 1); ++k) {
                const int a = At(i, k), b = At(i, k + 1), c = At(i + 1, k + 1), d = At(i + 1, k);
                faces.push_back({a, b, c});
                faces.push_back({a, c, d});
            }
    }

private:
    [[nodiscard]] int At(int row, int column) const {
        return row % m_rows * m_columns + column % m_columns;
    }

    int m_columns, m_rows;
};

/// A smoothed mesh says how many rows and columns the smooth one has.
void MakeGrid(const TDXFRecord& record, int flags, bool isSmooth, TVertexes& vertexes) {
    const qint64 rows = record.Integer(isSmooth ? 73 : 71);
    const qint64 columns = record.Integer(isSmooth ? 74 : 72);
    if (rows < 2 || columns < 2 || rows * columns > static_cast<qint64>(vertexes.Places.size()))
        return;
    TGridFaces(static_cast<int>(rows), static_cast<int>(columns))
        .Append((flags & pfClosed) != 0, (flags & pfClosedColumns) != 0, vertexes.Faces);
}

void AddMesh(TDXFBuilder& builder, const TDXFRecord& record, const TVertexes& vertexes) {
    if (vertexes.Faces.empty()) return builder.Pass(record, TDXFReport::TReason::NoPoints);
    builder.Add<TZEPMesh>(record, vertexes.Places.size() + vertexes.Faces.size(),
                          [&](TZEPMesh& mesh) {
                              mesh.SetColorFaces(false);
                              for (const TDXFBulgeVertex& place : vertexes.Places)
                                  mesh.Vertexes()->Add()->SetPoint(place.Point);
                              for (const TFace& corners : vertexes.Faces) {
                                  TZEPFace3CI* face = mesh.Faces()->Add();
                                  for (int i = 0; i < 3; ++i)
                                      face->SetData(i, corners[static_cast<std::size_t>(i)]);
                              }
                          });
}

/// Of the list of a mesh: a count, and so many corners; again and again. They count from 0.
class TFaceList {
public:
    explicit TFaceList(std::vector<TFace>& faces) : m_faces(faces) {}
    void Take(int value) {
        if (m_left == 0) {
            m_left = std::max(value, 0);
            m_taken = 0;
            return;
        }
        --m_left;
        ++m_taken;
        if (m_taken == 1) m_first = value;
        if (m_taken > 2) m_faces.push_back({m_first, m_last, value});
        m_last = value;
    }

private:
    std::vector<TFace>& m_faces;
    int m_left = 0, m_taken = 0, m_first = 0, m_last = 0;
};

} // namespace

void AddDXFMesh(TDXFBuilder& builder, const TDXFRecord& record) {
    enum { Level = 91, Faces = 93, Edges = 94, Value = 90 };
    TVertexes vertexes{};
    TFaceList faces(vertexes.Faces);
    bool isList = false;
    for (const TDXFRecord::TTag& tag : record.Tags()) {
        if (tag.Code == Faces || tag.Code == Edges) isList = tag.Code == Faces;
        if (tag.Code == 10) vertexes.Places.emplace_back();
        if (!vertexes.Places.empty()) tag.SetCoordinate(10, vertexes.Places.back().Point);
        if (tag.Code == Value && isList) faces.Take(DXFInteger(tag.Value));
    }
    if (record.Integer(Level) > 0) builder.Pass(record, TDXFReport::TReason::NotSmooth);
    AddMesh(builder, record, vertexes);
}

void AddDXFPolyline(TDXFBuilder& builder, const TDXFRecord& record) {
    TVertexes vertexes{
        .Head = {{0, 0, record.Number(30)}, 0, record.Number(40), record.Number(41)}};
    const int flags = record.Integer(70);
    if (!ReadVertexes(builder, vertexes)) return;
    if ((flags & pfMesh) != 0) MakeGrid(record, flags, vertexes.ControlPoints > 0, vertexes);
    if ((flags & (pfMesh | pfPolyface)) != 0 || !vertexes.Faces.empty())
        return AddMesh(builder, record, vertexes);
    const bool isSpatial = (flags & pfSpatial) != 0;
    for (TDXFBulgeVertex& place : vertexes.Places)
        if (isSpatial)
            place = {place.Point};
        else
            place.Point[2] = record.Number(30);
    builder.AddBulged(record, vertexes.Places, (flags & pfClosed) != 0,
                      isSpatial ? idd : FrameOf(record), (flags & pfRunsOn) != 0);
}

} // namespace ZEP
