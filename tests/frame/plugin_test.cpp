// The plugin as a host sees it: its exports, classes, objects, loading and unloading.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <stdlib.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "calcora/calcora.h"
#include "tavrel/PluginHost.h"
#include "tavrel/core.h"

namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

struct RegisteredClass {
    const char* name;
    const char* interfaceName;
    const char* fullName;
    const char* classId;
};

constexpr RegisteredClass kClasses[] = {
    {"CGeometric", "IGeometric", "quon_calcora.cgeometric", "clsid_calcora_cgeometric"},
    {"CGeoSetUp", "IGeoSetUp", "quon_calcora.cgeosetup", "clsid_calcora_cgeosetup"},
    {"CUnit", "IUnit", "quon_calcora.cunit", "clsid_calcora_cunit"},
    {"DataGeo", "IDataGeo", "quon_calcora.datageo", "clsid_calcora_datageo"},
    {"commonFunc", "IcommonFunc", "quon_calcora.commonfunc", "clsid_calcora_commonfunc"},
    {"CRTree", "ICRTree", "quon_calcora.crtree", "clsid_calcora_crtree"},
};

/// The loaded library's own handle while some plugin object keeps it loaded, else null.
void* loadedLibrary(const char* path = CALCORA_PLUGIN)
{
    void* library = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    if (library) dlclose(library);
    return library;
}

template <class Function>
Function* symbol(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(loadedLibrary(), name));
}

void expectEntry(const tav::ClassEntry& entry, const RegisteredClass& expected)
{
    const long id = tav::interfaceId(expected.interfaceName);
    EXPECT_STREQ(entry.fullName().c_str(), expected.fullName);
    EXPECT_STREQ(entry.classId().c_str(), expected.classId);
    EXPECT_EQ(entry.type(), 1);
    EXPECT_EQ(entry.interfaceIds(), tav::List<long>{id});
    for (const RegisteredClass& other : kClasses)
        EXPECT_EQ(entry.supports(tav::interfaceId(other.interfaceName)), &other == &expected);
    EXPECT_TRUE(entry.supports(tav::interfaceId("IObject")));
    EXPECT_FALSE(entry.supports(tav::kConcreteClassId));
}

class LoadedPlugin : public testing::Test {
protected:
    std::unique_ptr<tav::Plugin> plugin_ = tav::Plugin::load(CALCORA_PLUGIN);
};

TEST_F(LoadedPlugin, ExportsFourFunctionsAndTheContainersOnly)
{
    FILE* pipe = popen("nm -D --defined-only " CALCORA_PLUGIN, "r");
    ASSERT_NE(pipe, nullptr);
    std::vector<std::string> functions;
    char line[4096];
    while (std::fgets(line, sizeof line, pipe)) {
        const std::string_view symbol(line + 17);  // past the address: "T name\n"
        const std::string name(symbol.substr(2, symbol.size() - 3));
        if (symbol[0] == 'T') {
            functions.push_back(name);
            continue;
        }
        const std::string member = name.substr(name.find("3tav") + 4);
        EXPECT_THAT(member, AnyOf(StartsWith("6VectorI"), StartsWith("4ListI"),
                                  StartsWith("6detail14SharedSequenceI")))
            << name;
    }
    EXPECT_EQ(pclose(pipe), 0);
    EXPECT_THAT(functions, UnorderedElementsAre("TavInitPlugin", "TavFreePlugin", "initClasses",
                                                "tavrelVersion"));
}

TEST_F(LoadedPlugin, RegistersSixClassesInOrder)
{
    EXPECT_EQ(plugin_->frameworkVersion(), "1.0.0");
    ASSERT_EQ(plugin_->classes().size(), std::size(kClasses));
    for (std::size_t i = 0; i < std::size(kClasses); ++i) {
        SCOPED_TRACE(kClasses[i].name);
        expectEntry(*plugin_->classes()[i], kClasses[i]);
        EXPECT_EQ(static_cast<const tav::CppClassEntry*>(plugin_->classes()[i])->flags(), 0);
    }
}

TEST_F(LoadedPlugin, MakesNewEntriesInTheSameListWhenAskedAgain)
{
    auto* initClasses = symbol<tav::List<tav::ClassEntry*>*()>("initClasses");
    auto* version = symbol<const char*()>("tavrelVersion");
    const tav::List<tav::ClassEntry*>* list = initClasses();
    const std::vector<tav::ClassEntry*> first(list->begin(), list->end());
    EXPECT_EQ(initClasses(), list);
    ASSERT_EQ(list->size(), 6);
    for (int i = 0; i < 6; ++i) {
        const auto at = static_cast<std::size_t>(i);
        EXPECT_NE(list->at(i), first[at]);
        EXPECT_NE(list->at(i), plugin_->classes()[at]);
        expectEntry(*first[at], kClasses[at]);  // still alive: the module deletes none
        delete first[at];
        delete list->at(i);
    }
    EXPECT_EQ(version(), version());
    EXPECT_TRUE(symbol<bool()>("TavInitPlugin")());
}

TEST_F(LoadedPlugin, CreatesCountedObjectsOfEveryClass)
{
    for (const RegisteredClass& expected : kClasses) {
        SCOPED_TRACE(expected.name);
        const long own = tav::interfaceId(expected.interfaceName);
        for (const long id : {own, tav::interfaceId("IObject")}) {
            tav::IObject* object = plugin_->create(expected.fullName, id);
            ASSERT_NE(object, nullptr);
            EXPECT_EQ("quon_calcora." + std::string(object->className().c_str()),
                      expected.fullName);
            EXPECT_EQ(object->addRef(), 2);
            EXPECT_EQ(object->release(), 1);

            const tav::ClassInfo* info = object->classInfo();
            EXPECT_EQ(info->name, tav::DString(expected.name));
            EXPECT_EQ(info->bases.at(0)->id, own);
            EXPECT_EQ(object->release(), 0);
        }
        EXPECT_EQ(plugin_->create(expected.fullName, tav::kConcreteClassId), nullptr);
        EXPECT_EQ(plugin_->create(expected.fullName, tav::interfaceId("IPath")), nullptr);
    }
    EXPECT_EQ(plugin_->create("quon_calcora.CUnit", IUnit::staticInterfaceId()), nullptr);
}

TEST_F(LoadedPlugin, ServesCreationThroughTheHostWhileItIsLoaded)
{
    const long id = IUnit::staticInterfaceId();
    tav::createObject("N", id, nullptr);
    for (const char* key : {"n", "", static_cast<const char*>(nullptr), "N"}) {
        void* out = &out;
        tav::createObject(key, key && *key == 'N' ? tav::kConcreteClassId : id, &out);
        EXPECT_EQ(out, nullptr);
    }
    EXPECT_TRUE(tav::Ref<IGeometric>::create());

    tav::setCreationFilter(
        [](const char*, long asked, void* refused) {
            return asked != *static_cast<const long*>(refused);
        },
        const_cast<long*>(&id));
    EXPECT_FALSE(tav::Ref<IUnit>::create());
    EXPECT_TRUE(tav::Ref<IGeometric>::create());
    tav::setCreationFilter(nullptr, nullptr);
    EXPECT_TRUE(tav::Ref<IUnit>::create());

    const auto second = tav::Plugin::load(CALCORA_PLUGIN);
    EXPECT_EQ(tav::registeredClasses().size(), 12u);
    EXPECT_EQ(tav::registeredClasses()[0], plugin_->classes()[0]);
    plugin_.reset();
    EXPECT_TRUE(tav::Ref<IUnit>::create()) << "the other load still serves";
}

TEST(PluginLoading, LeavesNothingBehindWhenItIsUndone)
{
    for (int round = 0; round < 3; ++round) {
        const auto plugin = tav::Plugin::load(CALCORA_PLUGIN);
        EXPECT_NE(loadedLibrary(), nullptr);
        for (const RegisteredClass& c : kClasses)
            plugin->create(c.fullName, tav::interfaceId(c.interfaceName))->release();
    }
    EXPECT_EQ(loadedLibrary(), nullptr) << "the library stays in memory";
    EXPECT_TRUE(tav::registeredClasses().empty());
    EXPECT_FALSE(tav::Ref<IUnit>::create());
}

std::string loadError(const std::string& path)
{
    try {
        tav::Plugin::load(path);
    } catch (const tav::PluginError& error) {
        return error.what();
    }
    return "loaded";
}

TEST(PluginLoading, SaysInOneLineWhyAFileIsNoPlugin)
{
    const std::string text = testing::TempDir() + "not_a_plugin.so";
    std::ofstream(text) << "just a text\n";
    const std::pair<std::string, std::string> files[] = {
        {"", "no plugin file"},
        {"/nowhere/plugin.so", "/nowhere/plugin.so"},
        {testing::TempDir(), testing::TempDir()},
        {text, text},
        {TAVREL_CORE, "it does not export TavInitPlugin"}};
    for (const auto& [path, reason] : files) {
        const std::string message = loadError(path);
        EXPECT_THAT(message, HasSubstr(reason));
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    }
    std::remove(text.c_str());
}

TEST(PluginLoading, BearsWithAnOddPlugin)
{
    setenv("ODD_PLUGIN", "refuses", 1);
    EXPECT_THAT(loadError(CALCORA_ODD_PLUGIN), HasSubstr("refused to start"));
    EXPECT_EQ(getenv("ODD_PLUGIN_FREED"), nullptr) << "freed what never started";
    EXPECT_EQ(loadedLibrary(CALCORA_ODD_PLUGIN), nullptr);
    setenv("ODD_PLUGIN", "gives no list", 1);
    EXPECT_THAT(loadError(CALCORA_ODD_PLUGIN), HasSubstr("no list of classes"));
    unsetenv("ODD_PLUGIN_FREED");

    setenv("ODD_PLUGIN", "no version, an empty entry, a class without functions", 1);
    {
        const auto plugin = tav::Plugin::load(CALCORA_ODD_PLUGIN);
        EXPECT_EQ(plugin->frameworkVersion(), "");
        EXPECT_EQ(plugin->classes().size(), 1u);
        EXPECT_EQ(plugin->create("odd.class", 0), nullptr);
        EXPECT_FALSE(tav::Ref<IUnit>::create());
    }
    EXPECT_STREQ(getenv("ODD_PLUGIN_FREED"), "yes");
}

}  // namespace
