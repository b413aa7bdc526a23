// Draws the parallel of a polyline with an arc, and cuts the arc into chords.
#include <calcora/IcommonFunc.h>
#include <tavrel/PluginHost.h>
#include <tavrel/Ref.h>

#include <cstdio>

namespace {

void print(const char* title, const IcommonFunc::Points& points, const IcommonFunc::Values& bulges)
{
    std::printf("%s\n", title);
    for (int i = 0; i < points.size(); ++i)
        std::printf("  (%7.3f, %7.3f)  bulge %6.3f\n", points[i].x(), points[i].y(), bulges[i]);
}

}  // namespace

int main()
{
    const auto plugin = tav::Plugin::load("libquon_calcora.so");
    const auto common = tav::Ref<IcommonFunc>::create();

    // The middle of a lane: straight, a quarter turn to the left with radius 20, straight.
    const IcommonFunc::Points lane{{10, 0}, {50, 0}, {70, 20}, {70, 60}};
    const double quarter = common->bulgeFromRadius({50, 20}, {50, 0}, {70, 20}, 20.0, false);
    const IcommonFunc::Values bulges{0, quarter, 0, 0};
    print("lane", lane, bulges);

    // Left of the direction of travel is positive. The arc stays an arc about the same centre.
    IcommonFunc::Points kerb;
    IcommonFunc::Values kerbBulges;
    if (!common->offsetBulgePolyline(lane, bulges, -1.75, kerb, kerbBulges)) return 1;
    print("kerb on the right", kerb, kerbBulges);

    // Chords that stay within 5 cm of the arc, for a machine that knows no arcs.
    IcommonFunc::Points chords;
    common->bulgePolylineToChords(kerb, kerbBulges, 0.05, chords);
    std::printf("%d points, length %.3f instead of %.3f\n", chords.size(),
                common->polylineLength(chords),
                common->bulgePolylineLength(kerb, kerbBulges, false));
}

// Prints:
//   lane
//     ( 10.000,   0.000)  bulge  0.000
//     ( 50.000,   0.000)  bulge  0.414
//     ( 70.000,  20.000)  bulge  0.000
//     ( 70.000,  60.000)  bulge  0.000
//   kerb on the right
//     ( 10.000,  -1.750)  bulge  0.000
//     ( 50.000,  -1.750)  bulge  0.414
//     ( 71.750,  20.000)  bulge  0.000
//     ( 71.750,  60.000)  bulge  0.000
//   19 points, length 114.151 instead of 114.165
