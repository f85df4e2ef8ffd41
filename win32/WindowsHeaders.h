#pragma once

// The only place that includes the Windows headers. cmake/CompileOptions.cmake sets the oldest Windows,
// STRICT handle types and the lean set of headers for the whole program. Winsock 2 must precede windows.h,
// which would otherwise include its predecessor.
//
// The program's text is bytes in the ANSI code page: interfaces are called by their names in A, never through
// the macros that hide them, and UNICODE stays undefined.

#if defined(UNICODE) || defined(_UNICODE)
#error "Quarn uses the ANSI interfaces"
#endif

#include <winsock2.h>

#include <windows.h>
