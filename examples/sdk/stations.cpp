// Sets out stations along an axis with a straight, an arc and another straight.
#include <calcora/IcommonFunc.h>
#include <tavrel/PluginHost.h>
#include <tavrel/Ref.h>

#include <cstdio>

int main()
{
    const auto plugin = tav::Plugin::load("libquon_calcora.so");
    const auto common = tav::Ref<IcommonFunc>::create();

    // The arc runs from its start through a point to its end; its bulge carries side and sweep.
    const IcommonFunc::Points axis{{0, 0}, {60, 0}, {120, 60}, {120, 90}};
    const double bend = common->bulgeFrom3Points({60, 0}, {102.4264, 17.5736}, {120, 60});
    const IcommonFunc::Values bulges{0, bend, 0, 0};
    const IcommonFunc::Values heights{100.0, 101.2, 103.0, 102.4};

    IcommonFunc::Values stations;
    common->bulgePolylineStations(axis, bulges, stations);
    std::printf("vertices at");
    for (const double station : stations) std::printf(" %.3f", station);
    std::printf("\n");

    for (double station = 0; station <= stations.last(); station += 40) {
        tav::Point3DF point;
        if (!common->pointAtStation3d(0, axis, bulges, heights, stations, station, point)) return 1;
        std::printf("%6.1f  %8.3f %8.3f %8.3f\n", station, point.x(), point.y(), point.z());
    }

    // The other way round: which station does a tree stand beside, and on which side?
    const tav::Point2DF tree{100, 30};
    int segment = 0;
    double place = 0;
    tav::Point2DF foot;
    const double squared =
        common->nearestOnBulgePolylineEx(tree, axis, bulges, foot, &segment, &place);
    const double along =
        common->bulgeSegmentLength(axis[segment], axis[segment + 1], bulges[segment]);
    std::printf("the tree: station %.3f, %.3f to the %s\n",
                stations[segment] + (place - segment) * along, common->pointDist(tree, foot),
                common->pointSideOfBulgePolyline(tree, axis, bulges) > 0 ? "left" : "right");
    return squared < 0;
}

// Prints:
//   vertices at 0.000 60.000 154.248 184.248
//      0.0     0.000    0.000  100.000
//     40.0    40.000    0.000  100.800
//     80.0    79.632    3.303  101.582
//    120.0   110.488   27.582  102.346
//    160.0   120.000   65.752  102.885
//   the tree: station 115.638, 10.000 to the left
