#include <zep/converters/dxf/writer/Drawing.h>

#include <zep/converters/Placing.h>
#include <zep/converters/ReadReport.h>
#include <zep/converters/dxf/writer/Pairs.h>
#include <zep/scene/Vectors.h>
#include <zep/sheets/Layout.h>
#include <zep/view/Actor.h>

#include <algorithm>

namespace ZEP {

namespace {

constexpr qint64 ObjectsBetweenCalls = 1024;

// Handles: 1 to 9 the tables, A and B the spaces, C to F their blocks, 10 to 13 dictionaries and
// what is in them, 14 to 1A records of tables.

constexpr std::string_view Classes =
    "0 SECTION|2 CLASSES|"
    "0 CLASS|1 ACDBDICTIONARYWDFLT|2 AcDbDictionaryWithDefault|3 ObjectDBX Classes|"
    "90 0|91 1|280 0|281 0|"
    "0 CLASS|1 ACDBPLACEHOLDER|2 AcDbPlaceHolder|3 ObjectDBX Classes|90 0|91 1|280 0|281 0|"
    "0 ENDSEC|";

constexpr std::string_view TablesBehindLayers =
    "0 TABLE|2 STYLE|5 4|330 0|100 AcDbSymbolTable|70 1|"
    "0 STYLE|5 17|330 4|100 AcDbSymbolTableRecord|100 AcDbTextStyleTableRecord|2 Standard|70 0|"
    "40 0.0|41 1.0|50 0.0|71 0|42 1.0|3 arial.ttf|4 |0 ENDTAB|"
    "0 TABLE|2 VIEW|5 5|330 0|100 AcDbSymbolTable|70 0|0 ENDTAB|"
    "0 TABLE|2 UCS|5 6|330 0|100 AcDbSymbolTable|70 0|0 ENDTAB|"
    "0 TABLE|2 APPID|5 7|330 0|100 AcDbSymbolTable|70 1|"
    "0 APPID|5 18|330 7|100 AcDbSymbolTableRecord|100 AcDbRegAppTableRecord|2 ACAD|70 0|0 ENDTAB|"
    "0 TABLE|2 DIMSTYLE|5 8|330 0|100 AcDbSymbolTable|70 1|100 AcDbDimStyleTable|"
    "0 DIMSTYLE|105 19|330 8|100 AcDbSymbolTableRecord|100 AcDbDimStyleTableRecord|2 Standard|"
    "70 0|0 ENDTAB|"
    "0 TABLE|2 BLOCK_RECORD|5 9|330 0|100 AcDbSymbolTable|70 2|"
    "0 BLOCK_RECORD|5 A|330 9|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|"
    "2 *Model_Space|340 0|"
    "0 BLOCK_RECORD|5 B|330 9|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|"
    "2 *Paper_Space|340 0|0 ENDTAB|0 ENDSEC|";

constexpr std::string_view Blocks =
    "0 SECTION|2 BLOCKS|"
    "0 BLOCK|5 C|330 A|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 *Model_Space|70 0|"
    "10 0.0|20 0.0|30 0.0|3 *Model_Space|1 |"
    "0 ENDBLK|5 D|330 A|100 AcDbEntity|8 0|100 AcDbBlockEnd|"
    "0 BLOCK|5 E|330 B|100 AcDbEntity|67 1|8 0|100 AcDbBlockBegin|2 *Paper_Space|70 0|"
    "10 0.0|20 0.0|30 0.0|3 *Paper_Space|1 |"
    "0 ENDBLK|5 F|330 B|100 AcDbEntity|67 1|8 0|100 AcDbBlockEnd|0 ENDSEC|";

constexpr std::string_view Objects =
    "0 SECTION|2 OBJECTS|"
    "0 DICTIONARY|5 10|330 0|100 AcDbDictionary|281 1|3 ACAD_GROUP|350 11|"
    "3 ACAD_PLOTSTYLENAME|350 12|"
    "0 DICTIONARY|5 11|330 10|100 AcDbDictionary|281 1|"
    "0 ACDBDICTIONARYWDFLT|5 12|330 10|100 AcDbDictionary|281 1|3 Normal|350 13|"
    "100 AcDbDictionaryWithDefault|340 13|"
    "0 ACDBPLACEHOLDER|5 13|330 12|0 ENDSEC|0 EOF|";

void WriteViewport(TDXFPairs& pairs, const TZEPBounds& bounds) {
    const TGLArrayd3 size = bounds.Max - bounds.Min;
    pairs.Fixed("0 VPORT|5 1A|330 1|100 AcDbSymbolTableRecord|100 AcDbViewportTableRecord|"
                "2 *ACTIVE|70 0|10 0.0|20 0.0|11 1.0|21 1.0|");
    pairs.FlatPoint(12, Middle(bounds.Min, bounds.Max));
    pairs.Fixed("13 0.0|23 0.0|14 1.0|24 1.0|15 1.0|25 1.0|16 0.0|26 0.0|36 1.0|"
                "17 0.0|27 0.0|37 0.0|");
    pairs.Number(40, std::max({size[0], size[1], 1e-6}));
    pairs.Fixed("41 1.0|42 50.0|43 0.0|44 0.0|50 0.0|51 0.0|71 0|72 100|73 1|74 3|75 0|76 0|"
                "77 0|78 0|");
}

} // namespace

void TDXFDrawingWriter::Write(QIODevice& device, TReadReport& report) {
    TDXFPairs nothing(nullptr);
    TReadReport passedTwice;
    TDXFEntityWriter survey(nothing, m_tables, passedTwice);
    WriteObjects(survey, false);
    m_tables.LayerOf(nullptr, true);
    m_total = m_done;
    m_done = 0;

    const quint64 free = nothing.FreeHandle();
    TDXFPairs pairs(&device);
    const TZEPBounds bounds = survey.Bounds().value_or(TZEPBounds{});
    WriteHeader(pairs, bounds, survey.HasWidths(), free + m_tables.Count());
    pairs.Fixed(Classes);
    WriteTables(pairs, bounds, free);
    pairs.Fixed(Blocks);
    pairs.Fixed("0 SECTION|2 ENTITIES|");
    TDXFEntityWriter writer(pairs, m_tables, report);
    writer.SetSize(DiagonalOf(bounds));
    WriteObjects(writer, true);
    pairs.Text(0, "ENDSEC");
    pairs.Fixed(Objects);
    pairs.Flush();
}

void TDXFDrawingWriter::WriteObjects(TDXFEntityWriter& writer, bool asks) {
    for (TZEPObject* root : m_roots) WriteBelow(*root, {}, writer, asks);
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as a tree may be
void TDXFDrawingWriter::WriteBelow(TZEPObject& object, const TDXFPlace& place,
                                   TDXFEntityWriter& writer, bool asks) {
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i) {
        TZEPObject& child = *object.GetItem(i);
        if (qobject_cast<TZEPLayout*>(&child)) {
            writer.Count(QStringLiteral("sheets of paper (layouts)"));
            continue;
        }
        TDXFPlace own = place;
        MultMatrixd(place.Matrix, child.GetMatrix(), own.Matrix);
        if (child.metaObject() == &TZEPActor::staticMetaObject) {
            own.Layer = &child;
            own.IsLayerVisible = place.IsLayerVisible && place.IsVisible && child.Visible();
            own.IsVisible = true;
            m_tables.LayerOf(&child, own.IsLayerVisible); // an empty one is kept, too
        } else {
            own.IsVisible = place.IsVisible && child.Visible();
        }
        writer.Write(child, own);
        if (++m_done % ObjectsBetweenCalls == 0 && asks) Ask();
        WriteBelow(child, own, writer, asks);
    }
}

void TDXFDrawingWriter::Ask() {
    if (m_progress && !m_progress(m_done, m_total)) throw TReadingEnd();
}

void TDXFDrawingWriter::WriteHeader(TDXFPairs& pairs, const TZEPBounds& bounds, bool hasWidths,
                                    quint64 free) {
    pairs.Fixed("0 SECTION|2 HEADER|9 $ACADVER|1 AC1018|9 $DWGCODEPAGE|3 ANSI_1252|"
                "9 $INSBASE|10 0.0|20 0.0|30 0.0|9 $EXTMIN|");
    pairs.Point(10, bounds.Min);
    pairs.Text(9, "$EXTMAX");
    pairs.Point(10, bounds.Max);
    pairs.Text(9, "$LTSCALE");
    pairs.Number(40, 1);
    pairs.Text(9, "$LWDISPLAY");
    pairs.Integer(290, hasWidths ? 1 : 0);
    pairs.Text(9, "$HANDSEED");
    pairs.Handle(5, free);
    pairs.Text(0, "ENDSEC");
}

void TDXFDrawingWriter::WriteTables(TDXFPairs& pairs, const TZEPBounds& bounds,
                                    quint64 free) const {
    pairs.Fixed("0 SECTION|2 TABLES|0 TABLE|2 VPORT|5 1|330 0|100 AcDbSymbolTable|");
    pairs.Integer(70, m_hasViewport ? 1 : 0);
    if (m_hasViewport) WriteViewport(pairs, bounds);
    pairs.Text(0, "ENDTAB");
    m_tables.WriteLayers(pairs, m_tables.WriteLineTypes(pairs, free));
    pairs.Fixed(TablesBehindLayers);
}

} // namespace ZEP
