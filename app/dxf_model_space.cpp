#include "app/dxf_model_space.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <unordered_map>

#include "app/dxf_groups.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

constexpr int kComment = 999;

// Flags of POLYLINE and VERTEX (code 70).
constexpr int kPolygonMesh = 16;
constexpr int kPolyfaceMesh = 64;
constexpr int kSplineFrameVertex = 16;

/// Sine of the angle up to which an entity's plane counts as level.
constexpr double kLevelSine = 1e-9;

/// A kind of entity that is taken: what it must have and what of it is passed on.
struct Kind {
    std::string_view name;
    std::vector<int> required;
    std::vector<int> passed;
    bool ownPlane = false;  ///< coordinates are meant in the plane given by codes 210 to 230
};

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all = {
        {"LINE", {10, 20, 11, 21}, {10, 20, 30, 11, 21, 31}},
        {"ARC", {10, 20, 40, 50, 51}, {10, 20, 30, 40, 50, 51, 210, 220, 230}, true},
        {"CIRCLE", {10, 20, 40}, {10, 20, 30, 40, 210, 220, 230}, true},
        {"ELLIPSE",
         {10, 20, 11, 21, 40},
         {10, 20, 30, 11, 21, 31, 40, 41, 42, 210, 220, 230},
         true},
        {"LWPOLYLINE", {10, 20}, {38, 10, 20, 42, 210, 220, 230}, true},
        {"POLYLINE", {}, {70, 30, 210, 220, 230}, true},
        {"VERTEX", {10, 20}, {10, 20, 30, 42}},
    };
    return all;
}

const Kind* findKind(std::string_view name)
{
    for (const Kind& kind : kinds())
        if (kind.name == name) return &kind;
    return nullptr;
}

std::string lowered(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

/// One entity as it stands in the file.
struct Entity {
    std::string_view name;
    int line = 0;
    std::vector<DxfGroup> groups;

    const DxfGroup* find(int code) const
    {
        for (const DxfGroup& group : groups)
            if (group.code == code) return &group;
        return nullptr;
    }
    int count(int code) const
    {
        return static_cast<int>(
            std::count_if(groups.begin(), groups.end(),
                          [&](const DxfGroup& group) { return group.code == code; }));
    }
    int integer(int code) const
    {
        const DxfGroup* group = find(code);
        return group ? dxfInteger(group->value).value_or(0) : 0;
    }
    double number(int code, double otherwise) const
    {
        const DxfGroup* group = find(code);
        return group ? dxfNumber(group->value).value_or(otherwise) : otherwise;
    }
};

class Collector {
public:
    Collector(std::string_view text, const std::string& file,
              const std::vector<std::string>& wantedLayers)
        : groups_(text, file), file_(file)
    {
        for (const std::string& name : wantedLayers) wanted_[lowered(name)] = false;
    }

    DxfModelSpace collect(const std::vector<std::string>& wantedLayers);

private:
    DxfGroup nextGroup();
    void skipSection();
    void readEntities();
    void finish(const Entity& entity);
    void finishVertex(const Entity& entity, const Kind& kind);
    void check(const Entity& entity, const Kind& kind) const;
    std::string reasonToLeaveOut(const Entity& entity, const Kind& kind) const;
    int layerIndex(std::string_view name);
    bool isWanted(const std::string& layer);
    void pass(const Entity& entity, const Kind& kind);
    void put(int code, std::string_view value);

    /// Where the vertices that come now belong.
    enum class Chain { None, Taken, LeftOut };

    DxfGroups groups_;
    std::string file_;
    std::map<std::string, bool> wanted_;  ///< in lower case; whether something lies on it
    std::unordered_map<std::string, int> layerNumbers_;
    Chain chain_ = Chain::None;
    DxfModelSpace result_;
};

DxfModelSpace Collector::collect(const std::vector<std::string>& wantedLayers)
{
    bool hasEntities = false;
    put(0, "SECTION");
    put(2, "ENTITIES");
    while (true) {
        const DxfGroup group = nextGroup();
        if (group.code == 0 && group.value == "EOF") break;
        if (group.code != 0 || group.value != "SECTION")
            groups_.fail(group.line, "a section was expected");
        const DxfGroup name = nextGroup();
        if (name.code != 2) groups_.fail(name.line, "a section without a name");
        if (name.value == "ENTITIES") {
            hasEntities = true;
            readEntities();
        } else {
            skipSection();
        }
    }
    if (!hasEntities) throw UserError(file_ + ": the drawing has no entities section");
    for (const std::string& layer : wantedLayers)
        if (!wanted_[lowered(layer)])
            throw UserError(file_ + ": no layer \"" + layer + "\" with anything on it");
    put(0, "ENDSEC");
    put(0, "EOF");
    return std::move(result_);
}

DxfGroup Collector::nextGroup()
{
    auto group = groups_.next();
    while (group && group->code == kComment) group = groups_.next();
    if (!group)
        throw UserError(file_ + ": the file is cut off after line " +
                        std::to_string(groups_.line()) + " (no EOF mark)");
    return *group;
}

void Collector::skipSection()
{
    while (true) {
        const DxfGroup group = nextGroup();
        if (group.code != 0) continue;
        if (group.value == "ENDSEC") return;
        if (group.value == "SECTION" || group.value == "EOF")
            groups_.fail(group.line, "a section that does not end");
    }
}

void Collector::readEntities()
{
    Entity entity;
    while (true) {
        const DxfGroup group = nextGroup();
        if (group.code != 0) {
            if (entity.name.empty()) groups_.fail(group.line, "an entity was expected");
            entity.groups.push_back(group);
            continue;
        }
        if (!entity.name.empty()) finish(entity);
        if (group.value == "ENDSEC") break;
        if (group.value.empty() || group.value == "SECTION" || group.value == "EOF")
            groups_.fail(group.line, "the entities section does not end");
        entity.name = group.value;
        entity.line = group.line;
        entity.groups.clear();
    }
    chain_ = Chain::None;
}

void Collector::finish(const Entity& entity)
{
    if (entity.name == "SEQEND") {
        if (chain_ == Chain::Taken) put(0, "SEQEND");
        chain_ = Chain::None;
        return;
    }
    const Kind* kind = findKind(entity.name);
    if (kind) check(entity, *kind);
    if (kind && entity.name == "VERTEX" && chain_ != Chain::None) {
        finishVertex(entity, *kind);
        return;
    }
    // An attribute belongs to the insert before it.
    if (entity.name == "ATTRIB") return;

    const bool chain = entity.name == "POLYLINE";
    chain_ = chain ? Chain::LeftOut : Chain::None;
    const DxfGroup* layer = entity.find(8);
    const std::string layerName = lowered(std::string(layer ? layer->value : "0"));
    if (!isWanted(layerName)) {
        ++result_.onOtherLayers;
        return;
    }
    std::string name(entity.name);
    if (!kind || entity.name == "VERTEX") {
        ++result_.notTaken[name];
        return;
    }
    const std::string reason = reasonToLeaveOut(entity, *kind);
    if (!reason.empty()) {
        ++result_.notTaken[name + " (" + reason + ")"];
        return;
    }
    if (chain) chain_ = Chain::Taken;
    pass(entity, *kind);
}

void Collector::finishVertex(const Entity& entity, const Kind& kind)
{
    if (chain_ == Chain::Taken && !(entity.integer(70) & kSplineFrameVertex)) pass(entity, kind);
}

/// Throws for an entity that lacks a group, or that has a number that is none.
void Collector::check(const Entity& entity, const Kind& kind) const
{
    const std::string name(entity.name);
    for (const int code : kind.required)
        if (!entity.find(code))
            groups_.fail(entity.line, name + " without group " + std::to_string(code));
    if (entity.name == "LWPOLYLINE" && entity.count(10) != entity.count(20))
        groups_.fail(entity.line, name + " with a vertex that lacks a coordinate");
    for (const DxfGroup& group : entity.groups) {
        const bool number = isNumberCode(group.code);
        if (number && !dxfNumber(group.value))
            groups_.fail(group.line,
                         name + " with a number that is none, not finite or beyond 1e15");
        if (group.code == 70 && !dxfInteger(group.value))
            groups_.fail(group.line, name + " with flags that are no integer");
    }
}

/// Why an entity of a kind that is read cannot be taken; empty when it can.
std::string Collector::reasonToLeaveOut(const Entity& entity, const Kind& kind) const
{
    if (entity.integer(67) == 1) return "paper space";
    if (entity.name == "POLYLINE" && entity.integer(70) & (kPolygonMesh | kPolyfaceMesh))
        return "mesh";
    if (kind.ownPlane) {
        const double x = entity.number(210, 0);
        const double y = entity.number(220, 0);
        const double z = entity.number(230, 1);
        if (!(std::hypot(x, y) <= kLevelSine * std::fabs(z))) return "tilted plane";
    }
    return {};
}

/// Whether the layer, in lower case, was asked for; notes that it exists.
bool Collector::isWanted(const std::string& layer)
{
    if (wanted_.empty()) return true;
    const auto place = wanted_.find(layer);
    if (place != wanted_.end()) place->second = true;
    return place != wanted_.end();
}

int Collector::layerIndex(std::string_view name)
{
    const auto [place, isNew] = layerNumbers_.try_emplace(lowered(std::string(name)),
                                                          static_cast<int>(result_.layers.size()));
    if (isNew) result_.layers.emplace_back(name);
    return place->second;
}

/// Writes the entity for the library, with the number of vertices that it really has.
void Collector::pass(const Entity& entity, const Kind& kind)
{
    put(0, entity.name);
    const DxfGroup* layer = entity.find(8);
    put(8, std::to_string(layerIndex(layer && !layer->value.empty() ? layer->value : "0")));
    if (entity.name == "LWPOLYLINE") {
        put(90, std::to_string(entity.count(10)));
        put(70, std::to_string(entity.integer(70) | kLightPolylineFlag));
    }
    for (const DxfGroup& group : entity.groups)
        if (std::find(kind.passed.begin(), kind.passed.end(), group.code) != kind.passed.end())
            put(group.code, group.value);
}

void Collector::put(int code, std::string_view value)
{
    result_.text += std::to_string(code);
    result_.text += '\n';
    result_.text += value;
    result_.text += '\n';
}

/// Throws for files that are no DXF text at all.
void checkBeginning(std::string_view text, const std::string& file)
{
    if (text.empty()) throw UserError(file + ": the file is empty");
    if (text.starts_with("AutoCAD Binary DXF"))
        throw UserError(file + ": a binary DXF file; save it as a DXF text");
    if (text.starts_with("AC10"))
        throw UserError(file + ": a DWG file, not a DXF file; save it as DXF");
    DxfGroups groups(text.substr(text.starts_with("\xef\xbb\xbf") ? 3 : 0), file);
    try {
        while (const auto group = groups.next()) {
            if (group->code == kComment) continue;
            if (group->code == 0 && (group->value == "SECTION" || group->value == "EOF")) return;
            break;
        }
    } catch (const UserError&) {
    }
    throw UserError(file + ": not a DXF file");
}

}  // namespace

DxfModelSpace collectModelSpace(std::string_view text, const std::string& file,
                                const std::vector<std::string>& wantedLayers)
{
    checkBeginning(text, file);
    if (text.starts_with("\xef\xbb\xbf")) text.remove_prefix(3);
    return Collector(text, file, wantedLayers).collect(wantedLayers);
}

}  // namespace calcora::app
