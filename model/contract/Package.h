#pragma once

#include <cstdint>

namespace margindesk {

// What a package and the host that loads it must agree on before either calls the other. The version changes
// with every change of a class in model/contract or controls that a compiled package would notice.
inline constexpr std::uint32_t kContractVersion = 5;

#define MARGINDESK_TEXT_OF(x) #x
#define MARGINDESK_TEXT(x) MARGINDESK_TEXT_OF(x)

// The compiler's family and the ABI of its language and library: objects cross the border, so both sides must
// lay them out alike.
#if defined(__GLIBCXX__)
#define MARGINDESK_LIBRARY_TAG "libstdc++-" MARGINDESK_TEXT(_GLIBCXX_USE_CXX11_ABI)
#else
#define MARGINDESK_LIBRARY_TAG "libc++"
#endif
#if defined(__clang__)
#define MARGINDESK_COMPILER_FAMILY "clang"
#else
#define MARGINDESK_COMPILER_FAMILY "gcc"
#endif
inline constexpr char kCompilerTag[] =
    MARGINDESK_COMPILER_FAMILY "-abi" MARGINDESK_TEXT(__GXX_ABI_VERSION) "-" MARGINDESK_LIBRARY_TAG;

#undef MARGINDESK_COMPILER_FAMILY
#undef MARGINDESK_LIBRARY_TAG
#undef MARGINDESK_TEXT
#undef MARGINDESK_TEXT_OF

// One unit of a package: its start routine runs when the package is initialised and its end routine when it
// is finalised; either may be null.
struct TPackageUnit {
  const char* FName;
  void (*FStart)();
  void (*FEnd)();
};

// A package's information table. Its first three members never change their places, so that a host can refuse
// a package of any version.
struct TPackageInfo {
  std::uint32_t FSize;  // of this struct in the package, bytes
  std::uint32_t FContractVersion;
  const char* FCompilerTag;
  const char* FName;
  std::uint32_t FUnitCount;
  const TPackageUnit* FUnits;  // in the order of their start
  const char* FVersion;        // of the package itself, as its maker counts
};

// The three functions that a package exports by these names, C linkage. Nothing throws across them.
//
// Initialize runs every start routine in the order of the table and answers null, or why it could not: then
// the end routines of those units that had started have run. Finalize runs the end routines in reverse order.
using TGetPackageInfoTable = const TPackageInfo* (*)();
using TInitializePackage = const char* (*)();
using TFinalizePackage = void (*)();
inline constexpr char kGetPackageInfoTable[] = "GetPackageInfoTable";
inline constexpr char kInitializePackage[] = "Initialize";
inline constexpr char kFinalizePackage[] = "Finalize";

}  // namespace margindesk
