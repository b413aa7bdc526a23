// The objects that this room makes, and how it tells that one could not be made.
#pragma once

#include "frame/detail/path_access.h"

namespace calcora::paths {

/// The lines with which failed creations are reported, by operation and object.
enum CreationReport : int {
    kInsertPathReport = 77,
    kRemovePathReport = 195,
    kSetArcPathReport = 311,
    kPieceReport = 481,
    kChordReport3d = 504,
    kGeometricReport3d = 509,
    kCoefficientsReport3d = 534,
    kCentreReport3d = 539,
    kGeometricReport = 574,
    kChordReport = 576,
    kStartRadiusReport = 655,
    kEndRadiusReport = 660,
    kDiameterReport = 739,
    kDiameterGeometricReport = 745,
    kReversedReport = 760,
};

/// A new object offering I; a failed creation is reported and gives an empty reference.
template <class I>
tav::Ref<I> createForSetUp(CreationReport report)
{
    return createOrReport<I>("geosetup", report);
}

}  // namespace calcora::paths
