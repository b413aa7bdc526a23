#include "common/commonFunc.h"

commonFunc::commonFunc(unsigned workCapacity)
{
    for (WorkPair* pair : {&bulgePolylineWork_, &polylineWork_, &segmentWork_}) {
        pair->points.reserve(workCapacity);
        pair->params.reserve(workCapacity);
    }
}

commonFunc::~commonFunc() = default;
