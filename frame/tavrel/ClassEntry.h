// What a plugin hands to the host for every creatable class.
#pragma once

#include "tavrel/DString.h"
#include "tavrel/IObject.h"
#include "tavrel/List.h"
#include "tavrel/export.h"

namespace tav {

/// The language a class is written in.
enum LangModuleType : int { kLangNone = 0, kLangCpp = 1 };

using CreateInstanceFunction = IObject* (*)(long interfaceId);
using SupportsInterfaceFunction = bool (*)(long interfaceId);

/// One creatable class as the host sees it. The host owns the entries that a plugin hands over.
class TAV_CORE_API ClassEntry {
public:
    virtual ~ClassEntry();

    /// Kind of the entry: the language value for classes; 10 and more is kept for entries that
    /// hold living objects.
    virtual int type() const = 0;
    /// "module.class", in lower case.
    virtual DString fullName() const = 0;
    /// The text by which the class is told from all others.
    virtual DString classId() const = 0;
    /// The interfaces offered by name; `supports` also knows those they derive from.
    virtual List<long> interfaceIds() const = 0;
    /// A new instance offering interface `id` with one reference for the caller, or null. The
    /// pointer is the root of that very interface: it may be cast to it.
    virtual IObject* create(long id) const = 0;
    /// Whether instances offer interface `id`.
    virtual bool supports(long id) const = 0;
};

/// The entry of a class written in C++.
class TAV_CORE_API CppClassEntry final : public ClassEntry {
public:
    /// `flags` is reserved and 0. Null functions create and support nothing.
    CppClassEntry(int flags, DString name, DString classIdText, LangModuleType language,
                  List<long> ids, CreateInstanceFunction createFunction,
                  SupportsInterfaceFunction supportsFunction);
    ~CppClassEntry() override;

    int type() const override { return language_; }
    DString fullName() const override { return fullName_; }
    DString classId() const override { return classId_; }
    List<long> interfaceIds() const override { return interfaceIds_; }
    IObject* create(long id) const override;
    bool supports(long id) const override;

    int flags() const { return flags_; }

private:
    int flags_;
    DString fullName_;
    DString classId_;
    LangModuleType language_;
    List<long> interfaceIds_;
    CreateInstanceFunction create_;
    SupportsInterfaceFunction supports_;
};

}  // namespace tav
