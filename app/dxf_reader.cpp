#include "app/dxf_reader.h"

#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <sstream>

#include "app/dxf_groups.h"
#include "app/dxf_model_space.h"
#include "app/figures.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

using tav::Point2DF;

constexpr double kDefaultEllipseShare = 1e-3;  // of the larger semi-axis

// Flags of POLYLINE and LWPOLYLINE (code 70).
constexpr int kClosed = 1;
constexpr int k3d = 8;

/// Makes figures from what the DXF library finds.
class FigureMaker : public DL_CreationAdapter {
public:
    FigureMaker(Drawing& drawing, const ReadOptions& options) : drawing_(drawing), options_(options)
    {
    }

    void addLine(const DL_LineData& data) override
    {
        Figure figure;
        figure.points = {{data.x1, data.y1}, {data.x2, data.y2}};
        figure.bulges = {0.0, 0.0};
        figure.elevations = {data.z1, data.z2};
        add(std::move(figure), "LINE");
    }

    void addArc(const DL_ArcData& data) override
    {
        if (!(data.radius > 0)) return leaveOut("ARC (no radius)");
        add(placed(arcFigure({data.cx, data.cy}, data.radius, data.angle1, data.angle2), data.cz),
            "ARC");
    }

    void addCircle(const DL_CircleData& data) override
    {
        if (!(data.radius > 0)) return leaveOut("CIRCLE (no radius)");
        add(placed(circleFigure({data.cx, data.cy}, data.radius), data.cz), "CIRCLE");
    }

    void addEllipse(const DL_EllipseData& data) override
    {
        const Point2DF axis(data.mx, data.my);
        const Point2DF across((isMirrored() ? data.ratio : -data.ratio) * data.my,
                              (isMirrored() ? -data.ratio : data.ratio) * data.mx);
        EllipseArc ellipse{{data.cx, data.cy}, axis, across, data.angle1, data.angle2};
        if (std::fabs(data.ratio) > 1) {
            ellipse.major = across;
            ellipse.minor = Point2DF() - axis;
            ellipse.start -= std::numbers::pi / 2;
            ellipse.end -= std::numbers::pi / 2;
        }
        const double larger = std::hypot(ellipse.major.x(), ellipse.major.y());
        if (!(larger > 0) || data.ratio == 0) return leaveOut("ELLIPSE (no extent)");
        const double tolerance = options_.ellipseTolerance > 0 ? options_.ellipseTolerance
                                                               : kDefaultEllipseShare * larger;
        double reach = 0;
        Figure figure = ellipseFigure(ellipse, tolerance, reach);
        drawing_.ellipseReach = std::max(drawing_.ellipseReach, reach);
        figure.elevations = Values(figure.points.size(), data.cz);
        add(std::move(figure), "ELLIPSE");
    }

    void addPolyline(const DL_PolylineData& data) override
    {
        finishChain();
        chain_ = Figure();
        chain_.closed = (data.flags & kClosed) != 0;
        chain_.layer = layer();
        chainIs3d_ = (data.flags & k3d) != 0;
        chainIsLight_ = (data.flags & kLightPolylineFlag) != 0;
        chainIsMirrored_ = isMirrored();
        chainElevation_ = data.elevation;
        // The library hands the elevation of a POLYLINE on as its plane's height.
        if (chainElevation_ == 0) chainElevation_ = getExtrusion()->getElevation();
        inChain_ = true;
    }

    void addVertex(const DL_VertexData& data) override
    {
        const bool flip = chainIsMirrored_ && !chainIs3d_;
        chain_.points.append({flip ? -data.x : data.x, data.y});
        chain_.bulges.append(chainIs3d_ ? 0.0 : (flip ? -data.bulge : data.bulge));
        chain_.elevations.append(chainIs3d_ ? data.z : (flip ? -chainElevation_ : chainElevation_));
    }

    void endSequence() override { finishChain(); }

    /// To be called once more when the whole drawing is read.
    void finishChain()
    {
        if (!inChain_) return;
        inChain_ = false;
        if (!chain_.closed && !chain_.bulges.isEmpty()) chain_.bulges.last() = 0.0;
        take(std::move(chain_), chainIsLight_ ? "LWPOLYLINE" : "POLYLINE");
    }

private:
    bool isMirrored() const { return extrusion->getDirection()[2] < 0; }

    int layer() { return std::atoi(getAttributes().getLayer().c_str()); }

    void leaveOut(const char* kind) { ++drawing_.notTaken[kind]; }

    /// A figure of its own plane at that height, seen from above.
    Figure placed(Figure figure, double height) const
    {
        if (isMirrored()) {
            for (Point2DF& point : figure.points) point.setX(-point.x());
            for (double& bulge : figure.bulges) bulge = bulge == 0.0 ? 0.0 : -bulge;
            height = -height;
        }
        figure.elevations = Values(figure.points.size(), height);
        return figure;
    }

    void add(Figure figure, const char* kind)
    {
        finishChain();
        figure.layer = layer();
        take(std::move(figure), kind);
    }

    void take(Figure figure, const std::string& kind)
    {
        const Points& points = figure.points;
        const bool hasLength = std::any_of(points.begin(), points.end(),
                                           [&](const Point2DF& p) { return p != points.first(); });
        if (!hasLength) return leaveOut((kind + " (no length)").c_str());
        const Values& elevations = figure.elevations;
        if (std::all_of(elevations.begin(), elevations.end(), [](double z) { return z == 0.0; }))
            figure.elevations.clear();
        ++drawing_.taken[kind];
        drawing_.figures.push_back(std::move(figure));
    }

    Drawing& drawing_;
    const ReadOptions& options_;
    Figure chain_;
    bool inChain_ = false;
    bool chainIs3d_ = false;
    bool chainIsLight_ = false;
    bool chainIsMirrored_ = false;
    double chainElevation_ = 0;
};

std::string fileText(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) throw UserError(path + ": no such file");
    if (std::filesystem::is_directory(status)) throw UserError(path + ": a folder, not a file");
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw UserError(path + ": the file cannot be read");
    std::string text;
    std::array<char, 1 << 16> block{};
    while (stream.read(block.data(), block.size()), stream.gcount() > 0)
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    if (stream.bad()) throw UserError(path + ": the file cannot be read");
    return text;
}

}  // namespace

Drawing readDxf(const std::string& path, const ReadOptions& options)
{
    return readDxfText(fileText(path), path, options);
}

Drawing readDxfText(const std::string& text, const std::string& name, const ReadOptions& options)
{
    DxfModelSpace space = collectModelSpace(text, name, options.layers);
    Drawing drawing;
    drawing.layers = std::move(space.layers);
    drawing.notTaken = std::move(space.notTaken);
    drawing.onOtherLayers = space.onOtherLayers;

    std::istringstream stream(std::move(space.text));
    stream.imbue(std::locale::classic());
    FigureMaker maker(drawing, options);
    DL_Dxf dxf;
    if (!dxf.in(stream, &maker)) throw UserError(name + ": the drawing cannot be read");
    maker.finishChain();
    return drawing;
}

}  // namespace calcora::app
