#include "tavrel/ClassEntry.h"

#include <utility>

namespace tav {

ClassEntry::~ClassEntry() = default;

CppClassEntry::CppClassEntry(int flags, DString name, DString classIdText, LangModuleType language,
                             List<long> ids, CreateInstanceFunction createFunction,
                             SupportsInterfaceFunction supportsFunction)
    : flags_(flags),
      fullName_(std::move(name)),
      classId_(std::move(classIdText)),
      language_(language),
      interfaceIds_(std::move(ids)),
      create_(createFunction),
      supports_(supportsFunction)
{
}

CppClassEntry::~CppClassEntry() = default;

IObject* CppClassEntry::create(long id) const
{
    return create_ ? create_(id) : nullptr;
}

bool CppClassEntry::supports(long id) const
{
    return supports_ && supports_(id);
}

}  // namespace tav
