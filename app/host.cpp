#include "app/host.h"

#include <cstdlib>
#include <filesystem>

#include "app/user_error.h"

namespace calcora::app {

namespace fs = std::filesystem;

namespace {

std::unique_ptr<tav::Plugin> loaded(const fs::path& library)
{
    try {
        return tav::Plugin::load(library.string());
    } catch (const tav::PluginError& failure) {
        throw UserError(failure.what());
    }
}

}  // namespace

std::vector<std::string> pluginFolders(const std::string& asked)
{
    if (!asked.empty()) return {asked};
    if (const char* folder = std::getenv(kPluginFolderVariable); folder && *folder) return {folder};

    std::vector<std::string> folders;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error) {
        const fs::path folder = program.parent_path();
        const fs::path installed = CALCORA_LIBRARY_FOLDER;
        folders.push_back(folder.string());
        if (installed.is_relative())
            folders.push_back((folder / ".." / installed).lexically_normal().string());
        folders.push_back((folder / "../lib").lexically_normal().string());
    }
    folders.push_back((fs::path(CALCORA_INSTALL_PREFIX) / CALCORA_LIBRARY_FOLDER).string());
    return folders;
}

Host::Host(const std::string& askedFolder)
{
    const auto folders = pluginFolders(askedFolder);
    std::string searched;
    for (const std::string& folder : folders) {
        const fs::path library = fs::path(folder) / kMainPlugin;
        std::error_code error;
        if (fs::exists(library, error)) {
            plugin_ = loaded(library);
            return;
        }
        searched += (searched.empty() ? "" : ", ") + folder;
    }
    throw UserError(std::string(kMainPlugin) + " not found (looked in " + searched +
                    "); tell with --plugin-dir or " + kPluginFolderVariable);
}

void Host::loadGeometry()
{
    geometry_ = loaded(fs::path(plugin_->path()).replace_filename(kGeometryPlugin));
}

void Host::failToCreate(const char* interfaceName) const
{
    throw UserError(plugin_->path() + ": offers no " + interfaceName);
}

}  // namespace calcora::app
