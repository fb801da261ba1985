// Symbol visibility of the quorel shared library.
//
// The library is built with hidden visibility; everything a host may call is
// marked QRL_EXPORT.  Inside the build (QUOREL_BUILDING_LIBRARY defined) the
// macro exports, outside it imports, which on ELF is the same attribute.
#ifndef QUOREL_UTILITY_EXPORT_H
#define QUOREL_UTILITY_EXPORT_H

#if defined(_WIN32)
#if defined(QUOREL_BUILDING_LIBRARY)
#define QRL_EXPORT __declspec(dllexport)
#else
#define QRL_EXPORT __declspec(dllimport)
#endif
#else
#define QRL_EXPORT __attribute__((visibility("default")))
#endif

#endif
