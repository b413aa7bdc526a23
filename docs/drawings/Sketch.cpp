#include "Sketch.h"

#include <cmath>
#include <cstdio>
#include <numbers>

namespace drawings {

namespace {

/// Direction in which the segment arrives at its end.
double arrival(Point start, Point end, double bulge)
{
    // Half the sweep lies between the chord and the tangent at the end.
    return std::atan2(end.y() - start.y(), end.x() - start.x()) + 2 * std::atan(bulge);
}

double bulgeAt(const Values& bulges, int i)
{
    return i < bulges.size() ? bulges[i] : 0.0;
}

std::string decimals(double value, int places)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", places, value);
    // Minus zero is zero.
    const bool isZero = std::string(text).find_first_not_of("-0.") == std::string::npos;
    return isZero && text[0] == '-' ? text + 1 : text;
}

std::string pixels(double value)
{
    return decimals(value, 2);
}

std::string stroke(Pen pen)
{
    return " stroke=\"" + std::string(pen.colour) + "\" stroke-width=\"" + decimals(pen.width, 1) +
           "\"" + (pen.dashed ? " stroke-dasharray=\"6 4\"" : "");
}

std::string escaped(const std::string& text)
{
    std::string out;
    for (const char c : text) {
        if (c == '<')
            out += "&lt;";
        else if (c == '&')
            out += "&amp;";
        else
            out += c;
    }
    return out;
}

}  // namespace

std::string number(double value, int places)
{
    const std::string text = decimals(value, places);
    return text[0] == '-' ? "−" + text.substr(1) : text;
}

void Sketch::view(double left, double bottom, double scale)
{
    left_ = left;
    bottom_ = bottom;
    scale_ = scale;
}

std::string Sketch::path(const Points& points, const Values& bulges, bool closed) const
{
    std::string text = "M" + pixels(x(points[0])) + "," + pixels(y(points[0]));
    const int segments = closed ? points.size() : points.size() - 1;
    for (int i = 0; i < segments; ++i) {
        const Point from = points[i];
        const Point to = points[(i + 1) % points.size()];
        const double bulge = bulgeAt(bulges, i);
        if (bulge == 0) {
            text += " L";
        } else {
            const double radius =
                from.distanceTo(to) * (1 + bulge * bulge) / (4 * std::abs(bulge)) * scale_;
            // The page's y axis points down, so what turns left here turns right there.
            text += " A" + pixels(radius) + "," + pixels(radius) + " 0 " +
                    (std::abs(bulge) > 1 ? "1" : "0") + (bulge > 0 ? " 0 " : " 1 ");
        }
        text += pixels(x(to)) + "," + pixels(y(to));
    }
    return text + (closed ? " Z" : "");
}

void Sketch::line(const Points& points, const Values& bulges, Pen pen, bool closed)
{
    body_ += "<path d=\"" + path(points, bulges, closed) + "\" fill=\"none\"" + stroke(pen) +
             " stroke-linejoin=\"round\" stroke-linecap=\"round\"/>\n";
}

void Sketch::area(const Points& points, const Values& bulges, const char* colour)
{
    body_ += "<path d=\"" + path(points, bulges, true) + "\" fill=\"" + colour + "\"/>\n";
}

void Sketch::circle(Point centre, double radius, Pen pen)
{
    line({{centre.x() - radius, centre.y()}, {centre.x() + radius, centre.y()}}, {1, 1}, pen, true);
}

void Sketch::head(Point tip, double angle, Pen pen)
{
    const double length = 6 + 2 * pen.width;
    std::string text = "<path d=\"M" + pixels(x(tip)) + "," + pixels(y(tip));
    for (const double side : {-0.36, 0.36}) {
        const double direction = angle + std::numbers::pi + side;
        text += " L" + pixels(x(tip) + length * std::cos(direction)) + "," +
                pixels(y(tip) - length * std::sin(direction));
    }
    body_ += text + " Z\" fill=\"" + pen.colour + "\"/>\n";
}

void Sketch::arrow(const Points& points, const Values& bulges, Pen pen)
{
    line(points, bulges, pen);
    const int last = points.size() - 1;
    const double bulge = bulgeAt(bulges, last - 1);
    head(points[last], arrival(points[last - 1], points[last], bulge), pen);
}

void Sketch::measure(Point a, Point b, Pen pen)
{
    line({a, b}, {}, pen);
    head(b, arrival(a, b, 0), pen);
    head(a, arrival(b, a, 0), pen);
}

void Sketch::dot(Point p, const char* colour, double radius)
{
    body_ += "<circle cx=\"" + pixels(x(p)) + "\" cy=\"" + pixels(y(p)) + "\" r=\"" +
             decimals(radius, 1) + "\" fill=\"" + colour + "\" stroke=\"#ffffff\"/>\n";
}

void Sketch::words(Point p, const std::string& text, double right, double up, Align align,
                   const char* colour, bool bold)
{
    static constexpr const char* kAnchors[] = {"start", "middle", "end"};
    body_ += "<text x=\"" + pixels(x(p) + right) + "\" y=\"" + pixels(y(p) - up) +
             "\" text-anchor=\"" + kAnchors[static_cast<int>(align)] + "\" fill=\"" + colour +
             (bold ? "\" font-weight=\"bold" : "") + "\">" + escaped(text) + "</text>\n";
}

std::string Sketch::svg() const
{
    const std::string size =
        " width=\"" + decimals(width_, 0) + "\" height=\"" + decimals(height_, 0) + "\"";
    return "<svg xmlns=\"http://www.w3.org/2000/svg\"" + size + " viewBox=\"0 0 " +
           decimals(width_, 0) + " " + decimals(height_, 0) +
           "\" font-family=\"sans-serif\" font-size=\"14\">\n<rect" + size +
           " fill=\"#ffffff\"/>\n" + body_ + "</svg>\n";
}

}  // namespace drawings
