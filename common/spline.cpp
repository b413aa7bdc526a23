// Cubic spline.

#include "common/commonFunc.h"

void commonFunc::splineInterpolate(Points, Points&, bool, double) {}
