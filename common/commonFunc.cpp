#include "common/commonFunc.h"

commonFunc::commonFunc(unsigned workCapacity)
    : bulgePolylineWork_(workCapacity), polylineWork_(workCapacity)
{
}

commonFunc::~commonFunc() = default;
