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
    /// their sides meet. It is cut where it crosses itself, and what is closer to the figure than
    /// the distance goes; so there may be several pieces, or none. Parallels of closed figures are
    /// closed.
    std::vector<Figure> of(const Figure& figure, double distance) const;

private:
    struct Piece;
    struct Source;
    std::vector<Piece> cut(const Points& points, const Values& bulges) const;
    bool isKept(const Piece& piece, const Source& source) const;
    std::vector<Figure> closedChains(const std::vector<Piece>& pieces) const;
    std::vector<Figure> openChains(const std::vector<Piece>& pieces) const;

    tav::Ref<IcommonFunc> common_;
    tav::Ref<IDataGeo> dataGeo_;
    Interrupt& interrupt_;
    ExactScale scale_;
};

}  // namespace calcora::app
