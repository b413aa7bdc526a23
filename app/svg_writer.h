// Pictures of drawings.
#pragma once

#include <string>

#include "app/Drawing.h"
#include "app/figures.h"
#include "app/output_file.h"

namespace calcora::app {

struct SvgStyle {
    std::string fill = "none";
    std::string stroke = "none";
    double width = 1;  ///< of the stroke, in units of the page
};

/// A picture under way: the drawing's extent fitted to the page, y upwards, arcs as arcs. What is
/// added later lies over what came before.
class SvgPicture {
public:
    /// Writes the head of the picture. An empty extent gives an empty page.
    SvgPicture(OutputFile& out, const Box& extent, const std::string& title);

    /// Everything up to the matching endGroup() is drawn in this style.
    void beginGroup(const std::string& name, const SvgStyle& style);
    void endGroup();

    /// A figure, with as many bulges as points; `fill` takes the place of the group's when it is not empty, `tip` shows when a
    /// pointer rests on the figure.
    void figure(const Points& points, const Values& bulges, bool closed,
                const std::string& fill = {}, const std::string& tip = {});

    /// A dot with a radius in units of the page.
    void dot(const tav::Point2DF& place, double radius);

    /// Text beside a place, beginning there in the direction (radians, counter-clockwise from the
    /// x axis); what would stand on its head ends there instead.
    void label(const tav::Point2DF& place, double direction, const std::string& text);

    /// A length of the drawing in units of the page.
    double onPage(double length) const { return length * scale_; }

    /// Writes the end of the picture.
    void finish();

    /// Width for `count` lines on the page: thin where they are many.
    static double lineWidth(long long count);

private:
    std::string pathData(const Points& points, const Values& bulges, bool closed) const;
    std::string place(const tav::Point2DF& point) const;
    std::string x(const tav::Point2DF& point) const;
    std::string y(const tav::Point2DF& point) const;

    OutputFile& out_;
    Box extent_;
    double scale_ = 1;  ///< units of the page per unit of the drawing
    double pageWidth_ = 0;
    double pageHeight_ = 0;
};

/// Light colours, one after the other well apart in hue.
std::string lightColour(int index);

/// Dark colours for lines, in the order of the light ones' hues.
std::string darkColour(int index);

/// The text with the signs that XML keeps for itself written out.
std::string xmlText(const std::string& text);

}  // namespace calcora::app
