// A sheet for the drawings of the manual: lines with arcs, dots, arrows and words, as SVG.
#pragma once

#include <calcora/IcommonFunc.h>

#include <string>

namespace drawings {

using Point = tav::Point2DF;
using Points = IcommonFunc::Points;
using Values = IcommonFunc::Values;

// The colours of all drawings.
inline constexpr const char* kInk = "#37474f";     // words, given lines
inline constexpr const char* kFaint = "#b0bec5";   // helping lines
inline constexpr const char* kBlue = "#1e88e5";    // results
inline constexpr const char* kRed = "#e53935";     // outside, right, what is wrong
inline constexpr const char* kGreen = "#43a047";   // inside, left
inline constexpr const char* kOrange = "#fb8c00";  // boundaries, second results
inline constexpr const char* kPaleBlue = "#e3f2fd";
inline constexpr const char* kPaleGreen = "#e8f5e9";
inline constexpr const char* kPaleOrange = "#fff3e0";

struct Pen {
    const char* colour = kInk;
    double width = 2;
    bool dashed = false;
};

enum class Align { Left, Middle, Right };

/// Lengths of pens, dots and words are pixels; everything else is in the drawing's units, y up.
class Sketch {
public:
    Sketch(double width, double height) : width_(width), height_(height) {}

    /// Where what follows is drawn: the pixel (from the lower left) of the origin, pixels per unit.
    void view(double left, double bottom, double scale);

    /// Missing bulges are straight. A closed line has its last bulge on the closing segment.
    void line(const Points& points, const Values& bulges, Pen pen, bool closed = false);
    void area(const Points& points, const Values& bulges, const char* colour);
    void circle(Point centre, double radius, Pen pen);
    /// A line with an arrow head at its end.
    void arrow(const Points& points, const Values& bulges, Pen pen);
    /// A line with arrow heads at both ends.
    void measure(Point a, Point b, Pen pen = {kInk, 1});
    void dot(Point p, const char* colour, double radius = 4);
    /// Words beside a point, moved by (right, up) pixels.
    void words(Point p, const std::string& text, double right = 0, double up = 0,
               Align align = Align::Middle, const char* colour = kInk, bool bold = false);

    std::string svg() const;

private:
    double x(Point p) const { return left_ + p.x() * scale_; }
    double y(Point p) const { return height_ - bottom_ - p.y() * scale_; }
    std::string path(const Points& points, const Values& bulges, bool closed) const;
    void head(Point tip, double angle, Pen pen);

    double width_;
    double height_;
    double left_ = 0;
    double bottom_ = 0;
    double scale_ = 1;
    std::string body_;
};

/// A number with that many decimals, for words.
std::string number(double value, int places);

}  // namespace drawings
