// What the code blocks of the documents find around them: objects of every class, and checks of the
// values that their comments tell.
#pragma once

#include <calcora/calcora.h>
#include <geo/geometry.h>
#include <tavrel/PluginHost.h>
#include <tavrel/core.h>

#include <cstdio>
#include <memory>
#include <string>
#include <type_traits>

inline int failures = 0;

/// The plugins come first, so that they outlive the objects.
struct Objects {
    std::unique_ptr<tav::Plugin> calcora = tav::Plugin::load("libquon_calcora.so");
    std::unique_ptr<tav::Plugin> geometry = tav::Plugin::load("libtavrel_geometry.so");
    tav::Ref<IcommonFunc> common = tav::Ref<IcommonFunc>::create();
    tav::Ref<IDataGeo> geo = tav::Ref<IDataGeo>::create();
    tav::Ref<IGeometric> geometric = tav::Ref<IGeometric>::create();
    tav::Ref<IGeoSetUp> setup = tav::Ref<IGeoSetUp>::create();
    tav::Ref<ICRTree> tree = tav::Ref<ICRTree>::create();
    tav::Ref<IUnit> unit = tav::Ref<IUnit>::create();
};

/// The value with as many decimals as the text that stands for it.
inline std::string likeText(double value, const std::string& text)
{
    const auto point = text.find('.');
    char out[64];
    std::snprintf(out, sizeof out, "%.*f",
                  point == std::string::npos ? 0 : static_cast<int>(text.size() - point - 1),
                  value);
    return out;
}

inline std::string likeText(bool value, const std::string&)
{
    return value ? "true" : "false";
}

template <class Integer>
requires std::is_integral_v<Integer> std::string likeText(Integer value, const std::string&)
{
    return std::to_string(value);
}

/// "(x, y)"; both coordinates with the decimals of the first.
inline std::string likeText(const tav::Point2DF& p, const std::string& text)
{
    const std::string first = text.substr(1, text.find(',') - 1);
    return "(" + likeText(p.x(), first) + ", " + likeText(p.y(), first) + ")";
}

inline std::string likeText(const tav::Point3DF& p, const std::string& text)
{
    const std::string first = text.substr(1, text.find(',') - 1);
    return "(" + likeText(p.x(), first) + ", " + likeText(p.y(), first) + ", " +
           likeText(p.z(), first) + ")";
}

template <class T>
void expect(const T& value, const std::string& text, const char* file, int line)
{
    if (likeText(value, text) == text) return;
    std::fprintf(stderr, "%s:%d: %s, not %s\n", file, line, likeText(value, text).c_str(),
                 text.c_str());
    ++failures;
}
