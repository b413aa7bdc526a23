// Parallels of figures that nowhere come closer to the figure than their distance.
#pragma once

#include <vector>

#include "app/Drawing.h"
#include "app/exact_scale.h"
#include "app/host.h"
#include "app/progress.h"

namespace calcora::app {

/// Makes the parallels of figures.
class Parallels {
public:
    Parallels(const Host& host, Interrupt& interrupt, const ExactScale& scale);

    /// The parallel at a distance, in drawing units: to the left of an open figure when positive,
    /// outside of a closed one. Arcs stay arcs, corners are carried on to where the parallels of
    /// their sides meet. It is cut where it crosses itself; what is closer to the figure than the
    /// distance goes, and so does the tip of a corner in the parallel of another part. So there may
    /// be several pieces, or none. They run in the figure's direction. Parallels of closed figures
    /// are closed but where the figure crosses itself, those of open ones where they run into themselves.
    std::vector<Figure> of(const Figure& figure, double distance) const;

private:
    tav::Ref<IcommonFunc> common_;
    tav::Ref<IDataGeo> dataGeo_;
    Interrupt& interrupt_;
    ExactScale scale_;
};

}  // namespace calcora::app
