// Visibility of what crosses a library boundary.
#pragma once

#if defined(_WIN32)
#define TAV_EXPORT __declspec(dllexport)
#define TAV_TEMPLATE_API
#if defined(TAVREL_CORE_BUILD)
#define TAV_CORE_API __declspec(dllexport)
#else
#define TAV_CORE_API __declspec(dllimport)
#endif
#else
/// An exported function of a plugin.
#define TAV_EXPORT __attribute__((visibility("default")))
/// A container template: every library that instantiates it shares the instantiation.
#define TAV_TEMPLATE_API __attribute__((visibility("default")))
/// A function or class that lives in libtavrel_core.
#define TAV_CORE_API __attribute__((visibility("default")))
#endif
