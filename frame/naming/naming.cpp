#include "frame/naming/naming.h"

namespace calcora {

tav::DString fullClassName(const tav::DString& module, const tav::DString& className)
{
    tav::DString name = module;
    name += ".";
    name += className;
    return name.toLower();
}

tav::DString classIdString(const tav::DString& module, const tav::DString& className)
{
    const int restStart = module.indexOf("_") + 1;  // 0 without a "_"
    const tav::DString rest = module.mid(restStart, -1);
    return tav::DString("CLSID_%1_%2").arg(rest, 0, ' ').arg(className, 0, ' ').toLower();
}

}  // namespace calcora
