// What `calcora station` tells: as a table, JSON, CSV, a drawing and a picture.
#pragma once

#include <string>
#include <vector>

#include "app/axis.h"
#include "app/output_file.h"

namespace calcora::app {

/// A tick mark across an axis.
struct Tick {
    tav::Point2DF left;
    tav::Point2DF right;
};

struct AxisReport {
    int number = 0;  ///< from 1, in the order of the drawing
    const Figure* figure = nullptr;
    double length = 0;
    int segments = 0;
    int arcs = 0;
    std::vector<Station> stations;
    std::vector<Tick> ticks;     ///< one per station
    std::vector<double> beyond;  ///< stations asked for that the axis does not reach
};

struct StationReport {
    std::string file;
    Drawing drawing;
    std::vector<AxisReport> axes;
    double tick = 0;  ///< length of a tick mark to either side
    bool interrupted = false;
    double seconds = 0;  ///< from reading to the answer
};

std::string tableText(const StationReport& report);

/// One JSON object; its keys are told in docs/calcora.md.
std::string jsonText(const StationReport& report);

/// A line per station under a line of headings.
void writeCsv(OutputFile& out, const StationReport& report);

/// The axes on the layer AXES, the tick marks on the layer STATIONS.
void writeStations(OutputFile& out, const StationReport& report);

/// The axes with tick marks, labelled unless there are too many to read.
void drawStations(OutputFile& out, const StationReport& report);

}  // namespace calcora::app
