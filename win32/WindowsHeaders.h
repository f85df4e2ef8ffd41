#pragma once

// The one place where the Windows headers come in. The oldest Windows, STRICT handle types and the lean set
// of headers are chosen in cmake/CompileOptions.cmake, for the whole program alike. Winsock 2 has to stand
// before windows.h, which would otherwise bring in its predecessor.
//
// The program's text is bytes in the ANSI code page: interfaces are called by their names in A, never through
// the macros that hide them, and UNICODE stays undefined.

#if defined(UNICODE) || defined(_UNICODE)
#error "Quarn uses the ANSI interfaces"
#endif

#include <winsock2.h>

#include <windows.h>
