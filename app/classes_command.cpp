// calcora classes: what the loaded plugin registers.
#include <memory>
#include <nlohmann/json.hpp>

#include "app/commands.h"
#include "app/host.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

/// The interfaces that a host of this kind knows by name.
std::string interfaceName(long id)
{
    for (const char* name :
         {tav::IObject::kInterfaceName, IcommonFunc::kInterfaceName, IGeometric::kInterfaceName,
          IGeoSetUp::kInterfaceName, IDataGeo::kInterfaceName, ICRTree::kInterfaceName,
          IUnit::kInterfaceName})
        if (tav::interfaceId(name) == id) return name;
    return "unknown";
}

std::string classesText(const tav::Plugin& plugin)
{
    std::string text = plugin.path() + ", framework " + plugin.frameworkVersion() + "\n";
    for (const tav::ClassEntry* entry : plugin.classes()) {
        text +=
            std::string("  ") + entry->fullName().c_str() + "   " + entry->classId().c_str() + "\n";
        const tav::List<long> ids = entry->interfaceIds();
        for (const long id : ids)
            text += "      " + interfaceName(id) + "   " + std::to_string(id) + "\n";
    }
    return text;
}

std::string classesJson(const tav::Plugin& plugin)
{
    nlohmann::json list = nlohmann::json::array();
    for (const tav::ClassEntry* entry : plugin.classes()) {
        nlohmann::json interfaces = nlohmann::json::array();
        const tav::List<long> ids = entry->interfaceIds();
        for (const long id : ids) interfaces.push_back({{"name", interfaceName(id)}, {"id", id}});
        list.push_back({{"name", entry->fullName().c_str()},
                        {"class_id", entry->classId().c_str()},
                        {"interfaces", interfaces}});
    }
    const nlohmann::json json = {
        {"plugin", plugin.path()}, {"framework", plugin.frameworkVersion()}, {"classes", list}};
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace

void addClassesCommand(Commands& commands)
{
    Command command = commands.add(
        "classes", "List the classes that the plugin registers, with ids and interfaces");
    auto json = std::make_shared<bool>(false);
    command.flag("--json", *json, "Print the list as one JSON object");
    command.runs([json, &global = commands.global] {
        const Host host(global.pluginFolder);
        printAnswer(*json ? classesJson(host.plugin()) : classesText(host.plugin()));
        return kDoneStatus;
    });
}

}  // namespace calcora::app
