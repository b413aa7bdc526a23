// The drawings of the manual, each made by the operations that it explains.
#pragma once

#include <string>

namespace drawings {

// arcs.cpp
std::string bulges();
std::string sagitta();
std::string stations();

// places.cpp
std::string location();
std::string sides();
std::string intersections();

// lines.cpp
std::string offsetJoins();
std::string loopWalk();
std::string tensionAndSpline();
std::string tidyLines();

// objects.cpp
std::string paths();
std::string rtree();
std::string bearings();

}  // namespace drawings
