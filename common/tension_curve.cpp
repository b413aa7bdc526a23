// Curves under tension.

#include "common/commonFunc.h"

void commonFunc::tensionCurve(Points, Points&, bool, unsigned, unsigned, double) {}

bool commonFunc::tensionCurveRaw(Points, PointLists&, bool, unsigned, unsigned, double)
{
    return false;
}

void commonFunc::tensionCurveZ(Points, Values, Points&, Values&, bool, unsigned, unsigned, double)
{
}

bool commonFunc::tensionCurveZRaw(Points, Values, PointLists&, ValueLists&, bool, unsigned,
                                  unsigned, double)
{
    return false;
}
