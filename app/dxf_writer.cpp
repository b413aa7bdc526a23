#include "app/dxf_writer.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "app/figures.h"
#include "app/text.h"

namespace calcora::app {

namespace {

// Handles of the objects that others point to; every other object takes the next free one.
constexpr int kBlockRecordTable = 0x1;
constexpr int kLayerTable = 0x2;
constexpr int kLinetypeTable = 0x3;
constexpr int kModelSpace = 0x10;
constexpr int kPaperSpace = 0x11;
constexpr int kRootDictionary = 0x12;
constexpr int kGroupDictionary = 0x13;
constexpr int kFirstFreeHandle = 0x20;

/// The name as the format's text of that year holds it: characters beyond ASCII as \U+XXXX. Bytes
/// that are no UTF-8 stay as they are.
std::string encodedName(const std::string& name)
{
    std::string result;
    for (std::size_t i = 0; i < name.size();) {
        const auto lead = static_cast<unsigned char>(name[i]);
        const std::size_t more = lead >= 0xe0 && lead < 0xf0   ? 2
                                 : lead >= 0xc2 && lead < 0xe0 ? 1
                                                               : 0;
        std::uint32_t code = lead & (more == 2 ? 0x0fu : 0x1fu);
        bool valid = more > 0 && i + more < name.size();
        for (std::size_t k = 1; valid && k <= more; ++k) {
            const auto byte = static_cast<unsigned char>(name[i + k]);
            valid = (byte & 0xc0) == 0x80;
            code = code << 6 | (byte & 0x3fu);
        }
        if (!valid) {
            result += name[i++];
            continue;
        }
        constexpr char kHex[] = "0123456789ABCDEF";
        result += "\\U+";
        for (int shift = 12; shift >= 0; shift -= 4) result += kHex[code >> shift & 0xf];
        i += more + 1;
    }
    return result;
}

std::string upper(std::string text)
{
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

class Writer {
public:
    explicit Writer(OutputFile& out) : out_(out) {}

    void write(const std::vector<DxfLayer>& layers, const std::vector<Figure>& figures);

private:
    void group(int code, const std::string& value)
    {
        out_.write(std::to_string(code) + "\n" + value + "\n");
    }
    void group(int code, const char* value) { group(code, std::string(value)); }
    void group(int code, int value) { group(code, std::to_string(value)); }
    void group(int code, double value) { group(code, exactText(value)); }
    void point(int code, double x, double y, double z)
    {
        group(code, x);
        group(code + 10, y);
        group(code + 20, z);
    }
    void handle(int code, int value)
    {
        char hex[16];
        const auto end = std::to_chars(hex, hex + sizeof hex, value, 16).ptr;
        group(code, upper({hex, end}));
    }
    int newHandle() { return nextHandle_++; }

    void header(const Box& box, int handleSeed);
    void beginTable(const char* name, int tableHandle, int entries);
    void record(const char* kind, int recordHandle, int owner, const char* subclass,
                const std::string& name);
    void tables(const std::vector<DxfLayer>& layers, const Box& box);
    void viewport(const Box& box);
    void linetypes();
    void layerTable(const std::vector<DxfLayer>& layers);
    void blockRecords();
    void blocks();
    void entityHead(const char* kind, const std::string& layer);
    void lightPolyline(const Figure& figure, const std::string& layer);
    void polyline3d(const Figure& figure, const std::string& layer);
    void objects();

    OutputFile& out_;
    int nextHandle_ = kFirstFreeHandle;
};

bool isLevel(const Figure& figure)
{
    const Values& z = figure.elevations;
    return std::all_of(z.begin(), z.end(), [&](double value) { return value == z.first(); });
}

bool isStraight(const Figure& figure)
{
    return std::all_of(figure.bulges.begin(), figure.bulges.end(),
                       [](double bulge) { return bulge == 0.0; });
}

void Writer::write(const std::vector<DxfLayer>& layers, const std::vector<Figure>& figures)
{
    Box box;
    std::size_t vertices = 0;
    for (const Figure& figure : figures) {
        box.add(figureBox(figure.points, figure.bulges, figure.closed));
        vertices += static_cast<std::size_t>(figure.points.size()) + 2;
    }
    if (box.isEmpty()) box = {0, 0, 1, 1};
    constexpr std::size_t kTableHandles = 1000;  // more than the frame of the file takes
    header(box, static_cast<int>(vertices + layers.size() + kTableHandles));
    tables(layers, box);
    blocks();
    std::vector<std::string> names;
    names.reserve(layers.size());
    for (const DxfLayer& layer : layers) names.push_back(encodedName(layer.name));
    group(0, "SECTION");
    group(2, "ENTITIES");
    for (const Figure& figure : figures) {
        const std::string& layer = names[static_cast<std::size_t>(figure.layer)];
        if (isLevel(figure) || !isStraight(figure))
            lightPolyline(figure, layer);
        else
            polyline3d(figure, layer);
    }
    group(0, "ENDSEC");
    objects();
    group(0, "EOF");
}

void Writer::header(const Box& box, int handleSeed)
{
    group(0, "SECTION");
    group(2, "HEADER");
    group(9, "$ACADVER");
    group(1, "AC1015");
    group(9, "$DWGCODEPAGE");
    group(3, "ANSI_1252");
    group(9, "$EXTMIN");
    point(10, box.minX, box.minY, 0.0);
    group(9, "$EXTMAX");
    point(10, box.maxX, box.maxY, 0.0);
    group(9, "$INSUNITS");
    group(70, 0);
    group(9, "$HANDSEED");
    handle(5, handleSeed);
    group(0, "ENDSEC");
}

void Writer::beginTable(const char* name, int tableHandle, int entries)
{
    group(0, "TABLE");
    group(2, name);
    handle(5, tableHandle);
    group(330, "0");
    group(100, "AcDbSymbolTable");
    group(70, entries);
}

void Writer::record(const char* kind, int recordHandle, int owner, const char* subclass,
                    const std::string& name)
{
    group(0, kind);
    handle(5, recordHandle);
    handle(330, owner);
    group(100, "AcDbSymbolTableRecord");
    group(100, subclass);
    group(2, name);
}

void Writer::tables(const std::vector<DxfLayer>& layers, const Box& box)
{
    group(0, "SECTION");
    group(2, "TABLES");
    viewport(box);
    linetypes();
    layerTable(layers);

    const int styles = newHandle();
    beginTable("STYLE", styles, 1);
    record("STYLE", newHandle(), styles, "AcDbTextStyleTableRecord", "Standard");
    group(70, 0);
    group(40, 0.0);
    group(41, 1.0);
    group(50, 0.0);
    group(71, 0);
    group(42, 1.0);
    group(3, "txt");
    group(4, "");
    group(0, "ENDTAB");

    beginTable("VIEW", newHandle(), 0);
    group(0, "ENDTAB");
    beginTable("UCS", newHandle(), 0);
    group(0, "ENDTAB");

    const int applications = newHandle();
    beginTable("APPID", applications, 1);
    record("APPID", newHandle(), applications, "AcDbRegAppTableRecord", "ACAD");
    group(70, 0);
    group(0, "ENDTAB");

    const int dimensionStyles = newHandle();
    beginTable("DIMSTYLE", dimensionStyles, 1);
    group(100, "AcDbDimStyleTable");
    group(0, "DIMSTYLE");
    handle(105, newHandle());
    handle(330, dimensionStyles);
    group(100, "AcDbSymbolTableRecord");
    group(100, "AcDbDimStyleTableRecord");
    group(2, "Standard");
    group(70, 0);
    group(0, "ENDTAB");

    blockRecords();
    group(0, "ENDSEC");
}

/// The view that programs open the drawing with: all of it.
void Writer::viewport(const Box& box)
{
    const int table = newHandle();
    beginTable("VPORT", table, 1);
    record("VPORT", newHandle(), table, "AcDbViewportTableRecord", "*Active");
    const double height = std::max({box.height(), box.width() * 0.6, 1e-9}) * 1.1;
    group(70, 0);
    const auto pair = [&](int code, double x, double y) {
        group(code, x);
        group(code + 10, y);
    };
    pair(10, 0.0, 0.0);
    pair(11, 1.0, 1.0);
    pair(12, box.minX + box.width() / 2, box.minY + box.height() / 2);
    pair(13, 0.0, 0.0);
    pair(14, 10.0, 10.0);
    pair(15, 10.0, 10.0);
    point(16, 0.0, 0.0, 1.0);
    point(17, 0.0, 0.0, 0.0);
    group(40, height);
    group(41, 1.6);
    group(42, 50.0);
    group(43, 0.0);
    group(44, 0.0);
    group(50, 0.0);
    group(51, 0.0);
    group(71, 0);
    group(72, 1000);
    group(73, 1);
    group(74, 3);
    group(75, 0);
    group(76, 0);
    group(77, 0);
    group(78, 0);
    group(0, "ENDTAB");
}

void Writer::linetypes()
{
    beginTable("LTYPE", kLinetypeTable, 3);
    for (const char* name : {"ByBlock", "ByLayer", "Continuous"}) {
        record("LTYPE", newHandle(), kLinetypeTable, "AcDbLinetypeTableRecord", name);
        group(70, 0);
        group(3, "");
        group(72, 65);
        group(73, 0);
        group(40, 0.0);
    }
    group(0, "ENDTAB");
}

void Writer::layerTable(const std::vector<DxfLayer>& layers)
{
    std::vector<DxfLayer> written = {{"0", 7}};
    for (const DxfLayer& layer : layers)
        if (std::none_of(written.begin(), written.end(), [&](const DxfLayer& other) {
                return upper(other.name) == upper(layer.name);
            }))
            written.push_back(layer);
    beginTable("LAYER", kLayerTable, static_cast<int>(written.size()));
    for (const DxfLayer& layer : written) {
        record("LAYER", newHandle(), kLayerTable, "AcDbLayerTableRecord", encodedName(layer.name));
        group(70, 0);
        group(62, layer.colour);
        group(6, "Continuous");
    }
    group(0, "ENDTAB");
}

void Writer::blockRecords()
{
    beginTable("BLOCK_RECORD", kBlockRecordTable, 2);
    record("BLOCK_RECORD", kModelSpace, kBlockRecordTable, "AcDbBlockTableRecord", "*Model_Space");
    record("BLOCK_RECORD", kPaperSpace, kBlockRecordTable, "AcDbBlockTableRecord", "*Paper_Space");
    group(0, "ENDTAB");
}

void Writer::blocks()
{
    group(0, "SECTION");
    group(2, "BLOCKS");
    for (const int owner : {kModelSpace, kPaperSpace}) {
        const char* name = owner == kModelSpace ? "*Model_Space" : "*Paper_Space";
        const auto head = [&](const char* kind, const char* subclass) {
            group(0, kind);
            handle(5, newHandle());
            handle(330, owner);
            group(100, "AcDbEntity");
            if (owner == kPaperSpace) group(67, 1);
            group(8, "0");
            group(100, subclass);
        };
        head("BLOCK", "AcDbBlockBegin");
        group(2, name);
        group(70, 0);
        point(10, 0.0, 0.0, 0.0);
        group(3, name);
        group(1, "");
        head("ENDBLK", "AcDbBlockEnd");
    }
    group(0, "ENDSEC");
}

void Writer::entityHead(const char* kind, const std::string& layer)
{
    group(0, kind);
    handle(5, newHandle());
    handle(330, kModelSpace);
    group(100, "AcDbEntity");
    group(8, layer);
}

void Writer::lightPolyline(const Figure& figure, const std::string& layer)
{
    entityHead("LWPOLYLINE", layer);
    group(100, "AcDbPolyline");
    group(90, figure.points.size());
    group(70, figure.closed ? 1 : 0);
    if (!figure.elevations.isEmpty()) group(38, figure.elevations.first());
    for (int i = 0; i < figure.points.size(); ++i) {
        group(10, figure.points.at(i).x());
        group(20, figure.points.at(i).y());
        if (figure.bulges.at(i) != 0.0) group(42, figure.bulges.at(i));
    }
}

void Writer::polyline3d(const Figure& figure, const std::string& layer)
{
    entityHead("POLYLINE", layer);
    group(100, "AcDb3dPolyline");
    group(66, 1);
    point(10, 0.0, 0.0, 0.0);
    group(70, figure.closed ? 9 : 8);
    for (int i = 0; i < figure.points.size(); ++i) {
        entityHead("VERTEX", layer);
        group(100, "AcDbVertex");
        group(100, "AcDb3dPolylineVertex");
        point(10, figure.points.at(i).x(), figure.points.at(i).y(), figure.elevations.at(i));
        group(70, 32);
    }
    entityHead("SEQEND", layer);
}

void Writer::objects()
{
    group(0, "SECTION");
    group(2, "OBJECTS");
    group(0, "DICTIONARY");
    handle(5, kRootDictionary);
    group(330, "0");
    group(100, "AcDbDictionary");
    group(281, 1);
    group(3, "ACAD_GROUP");
    handle(350, kGroupDictionary);
    group(0, "DICTIONARY");
    handle(5, kGroupDictionary);
    handle(330, kRootDictionary);
    group(100, "AcDbDictionary");
    group(281, 1);
    group(0, "ENDSEC");
}

}  // namespace

void writeDxf(OutputFile& out, const std::vector<DxfLayer>& layers,
              const std::vector<Figure>& figures)
{
    Writer(out).write(layers, figures);
}

}  // namespace calcora::app
