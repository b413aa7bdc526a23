// The reader of drawings: raw bytes, and groups put together at random.
#include <cstdlib>
#include <string>

#include "app/dxf_reader.h"
#include "app/user_error.h"
#include "fuzz/source.h"

namespace {

std::string randomGroups(fuzz::Source& source)
{
    static constexpr const char* kNames[] = {
        "SECTION",  "ENDSEC", "HEADER", "ENTITIES", "BLOCKS",     "TABLES",
        "EOF",      "LINE",   "ARC",    "CIRCLE",   "ELLIPSE",    "LWPOLYLINE",
        "POLYLINE", "VERTEX", "SEQEND", "INSERT",   "SPLINE",     "$ACADVER",
        "0",        "1e400",  "nan",    "-",        "4294967296", ""};
    static constexpr int kCodes[] = {0,  2,  8,  10, 20, 30, 11, 21, 31, 40, 41,  42,  43,  38,
                                     39, 50, 51, 62, 66, 67, 70, 71, 90, 91, 210, 220, 230, 999};
    std::string text = source.oneIn(2) ? "0\nSECTION\n2\nENTITIES\n" : "";
    for (int n = source.below(120); n > 0; --n) {
        const int code = source.oneIn(3) ? 0 : kCodes[source.below(std::size(kCodes))];
        text += std::to_string(source.oneIn(200) ? source.index(1000) : code);
        text += source.oneIn(100) ? "\r\n" : "\n";
        if (source.oneIn(code < 10 ? 2 : 16))
            text += kNames[source.below(std::size(kNames))];
        else if (code >= 60 && code < 100)
            text += std::to_string(source.below(9) - 1);
        else
            text += std::to_string(source.oneIn(2) ? source.coordinate() : source.number());
        text += '\n';
    }
    if (!source.oneIn(8)) text += "0\nENDSEC\n0\nEOF\n";
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Source source(data, size);
    const bool isRaw = source.oneIn(2);
    const std::string text =
        isRaw ? std::string(reinterpret_cast<const char*>(data), size) : randomGroups(source);
    try {
        const auto drawing = calcora::app::readDxfText(text, "fuzz", {});
        for (const auto& figure : drawing.figures)
            for (const auto& point : figure.points)
                if (figure.points.size() < 2 || figure.bulges.size() != figure.points.size() ||
                    !std::isfinite(point.x() + point.y()))
                    std::abort();
    } catch (const calcora::app::UserError&) {
    }
    return 0;
}
