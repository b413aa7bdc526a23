#include "app/svg_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "app/text.h"

namespace calcora::app {

namespace {

// Of the page, in its own units (pixels at full size).
constexpr double kLargestWidth = 1200;
constexpr double kLargestHeight = 900;
constexpr double kSmallestSide = 120;
constexpr double kMargin = 24;
constexpr int kDecimals = 4;

/// Height of an arc over its chord, in units of the page, that nobody sees; viewers draw such arcs,
/// with their huge radii, badly.
constexpr double kFlatSagitta = 0.005;

std::string hexColour(double red, double green, double blue)
{
    constexpr char kHex[] = "0123456789abcdef";
    std::string text = "#";
    for (const double part : {red, green, blue}) {
        const int value = static_cast<int>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
        text += kHex[value >> 4];
        text += kHex[value & 15];
    }
    return text;
}

/// The colour of that hue (in turns), saturation and lightness.
std::string hslColour(double hue, double saturation, double lightness)
{
    const double reach = saturation * std::min(lightness, 1 - lightness);
    const auto part = [&](double offset) {
        const double k = std::fmod(offset + hue * 12, 12.0);
        return lightness - reach * std::max(-1.0, std::min({k - 3, 9 - k, 1.0}));
    };
    return hexColour(part(0), part(8), part(4));
}

/// Steps of the golden section spread the hues evenly however many there are.
double hueOf(int index)
{
    constexpr double kGoldenTurn = 0.618033988749895;
    return std::fmod(0.55 + index * kGoldenTurn, 1.0);
}

/// The arc command up to its end point. On the page, where y runs down, a counter-clockwise arc of
/// the drawing has the sweep flag 0; an arc beyond the half circle has the large-arc flag 1.
std::string arcCommand(double chord, double bulge)
{
    const double radius = chord * (1 + bulge * bulge) / (4 * std::fabs(bulge));
    const std::string r = fixedText(radius, kDecimals);
    std::string command = "A";
    command += r + " " + r + " 0 ";
    command += std::fabs(bulge) > 1 ? "1 " : "0 ";
    command += bulge > 0 ? "0 " : "1 ";
    return command;
}

}  // namespace

std::string lightColour(int index)
{
    constexpr std::array kLightness = {0.84, 0.89, 0.80};
    return hslColour(hueOf(index), 0.58,
                     kLightness[static_cast<std::size_t>(index) % kLightness.size()]);
}

std::string darkColour(int index)
{
    return hslColour(hueOf(index), 0.75, 0.36);
}

std::string xmlText(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else if (c == '"')
            result += "&quot;";
        else
            result += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
    return result;
}

SvgPicture::SvgPicture(OutputFile& out, const Box& extent, const std::string& title)
    : out_(out), extent_(extent)
{
    if (extent_.isEmpty()) extent_ = {0, 0, 0, 0};
    const double width = extent_.width();
    const double height = extent_.height();
    if (width > 0 || height > 0)
        scale_ = std::min(kLargestWidth / std::max(width, height * 1e-6),
                          kLargestHeight / std::max(height, width * 1e-6));
    pageWidth_ = std::max(width * scale_, kSmallestSide) + 2 * kMargin;
    pageHeight_ = std::max(height * scale_, kSmallestSide) + 2 * kMargin;
    const std::string w = fixedText(pageWidth_, 2);
    const std::string h = fixedText(pageHeight_, 2);
    out_.write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + w + "\" height=\"" + h +
               "\" viewBox=\"0 0 " + w + " " + h +
               "\" font-family=\"sans-serif\" font-size=\"12\">\n<title>" + xmlText(title) +
               "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n");
}

void SvgPicture::beginGroup(const std::string& name, const SvgStyle& style)
{
    out_.write("<g class=\"" + xmlText(name) + "\" fill=\"" + style.fill + "\" stroke=\"" +
               style.stroke + "\" stroke-width=\"" + fixedText(style.width, 2) +
               "\" stroke-linejoin=\"round\" stroke-linecap=\"round\">\n");
}

void SvgPicture::endGroup()
{
    out_.write("</g>\n");
}

void SvgPicture::figure(const Points& points, const Values& bulges, bool closed,
                        const std::string& fill, const std::string& tip)
{
    std::string element = "<path";
    if (!fill.empty()) element += " fill=\"" + fill + "\"";
    element += " d=\"" + pathData(points, bulges, closed) + "\"";
    element += tip.empty() ? "/>\n" : "><title>" + xmlText(tip) + "</title></path>\n";
    out_.write(element);
}

void SvgPicture::dot(const tav::Point2DF& place, double radius)
{
    out_.write("<circle cx=\"" + x(place) + "\" cy=\"" + y(place) + "\" r=\"" +
               fixedText(radius, 2) + "\"/>\n");
}

void SvgPicture::label(const tav::Point2DF& place, double direction, const std::string& text)
{
    constexpr double kUpright = 1e-9;  // text straight down counts as straight up
    const bool headDown = std::cos(direction) < -kUpright;
    const double degrees = -direction * 180 / std::numbers::pi + (headDown ? 180 : 0);
    out_.write("<text x=\"" + x(place) + "\" y=\"" + y(place) + "\" dx=\"" +
               (headDown ? "-4\" text-anchor=\"end" : "4") + "\" dy=\"4\" transform=\"rotate(" +
               fixedText(degrees, 2) + " " + x(place) + " " + y(place) + ")\">" + xmlText(text) +
               "</text>\n");
}

void SvgPicture::finish()
{
    out_.write("</svg>\n");
}

double SvgPicture::lineWidth(long long count)
{
    constexpr double kThickest = 1.3;
    constexpr double kThinnest = 0.25;
    constexpr double kCountOfThickest = 600;
    const double lines = static_cast<double>(std::max(count, 1LL));
    return std::clamp(kThickest * std::pow(kCountOfThickest / lines, 0.3), kThinnest, kThickest);
}

std::string SvgPicture::place(const tav::Point2DF& point) const
{
    std::string text = x(point);
    text += ' ';
    text += y(point);
    return text;
}

std::string SvgPicture::x(const tav::Point2DF& point) const
{
    const double centre = extent_.minX + extent_.width() / 2;
    return fixedText(pageWidth_ / 2 + (point.x() - centre) * scale_, kDecimals);
}

std::string SvgPicture::y(const tav::Point2DF& point) const
{
    const double centre = extent_.minY + extent_.height() / 2;
    return fixedText(pageHeight_ / 2 - (point.y() - centre) * scale_, kDecimals);
}

/// The figure as commands M, L, A and Z.
std::string SvgPicture::pathData(const Points& points, const Values& bulges, bool closed) const
{
    std::string data = "M";
    data += place(points.at(0));
    const int count = points.size();
    for (int i = 0; i < (closed ? count : count - 1); ++i) {
        const tav::Point2DF& from = points.at(i);
        const tav::Point2DF& to = points.at((i + 1) % count);
        const double bulge = bulges.at(i);
        const double chord = from.distanceTo(to) * scale_;
        const bool isArc = std::fabs(bulge) * chord / 2 > kFlatSagitta;
        if (!isArc && i + 1 == count) continue;  // Z draws it
        data += isArc ? arcCommand(chord, bulge) : "L";
        data += place(to);
    }
    return closed ? data + "Z" : data;
}

}  // namespace calcora::app
