// Marks what the framework's shared library offers to its plug-ins and hosts.
//
// The framework is built with ORX_FRAMEWORK_BUILD defined and exports these names; everybody
// else imports them. Plug-ins and hosts of one process use one and the same library, for the
// factory dictionary, the settings and the environment are in it; so they link it and carry no
// copy. Interfaces without the mark are abstract classes and values that need nothing of the
// library.
#pragma once

#if defined(_WIN32)
#  if defined(ORX_FRAMEWORK_BUILD)
#    define ORX_FRAMEWORK_API __declspec(dllexport)
#  else
#    define ORX_FRAMEWORK_API __declspec(dllimport)
#  endif
#else
#  define ORX_FRAMEWORK_API __attribute__((visibility("default")))
#endif
