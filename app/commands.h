// The commands of calcora.
#pragma once

#include "app/command.h"

namespace calcora::app {

/// Closed loops from a drawing.
void addLoopsCommand(Commands& commands);
/// Smooth curves through the points of a drawing.
void addSmoothCommand(Commands& commands);
/// Stations along the axes of a drawing.
void addStationCommand(Commands& commands);
/// What the figures on each layer measure.
void addMeasureCommand(Commands& commands);
/// Parallels of figures.
void addOffsetCommand(Commands& commands);
/// Outlines with right angles.
void addSquareCommand(Commands& commands);
/// Fewer vertices, arcs kept.
void addSimplifyCommand(Commands& commands);
/// What the loaded plugin registers.
void addClassesCommand(Commands& commands);

}  // namespace calcora::app
