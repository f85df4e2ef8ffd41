# One interface library carries the options that every target of the project is compiled with.
add_library(quarn_options INTERFACE)

target_compile_options(quarn_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wcast-qual -Wformat=2 -Werror
  -fstack-protector-strong
  # Designated initialisers leave out what keeps its default.
  -Wno-missing-field-initializers)

# Index checks of the standard containers stay on in releases: a wrong index ends in an error that the
# log names, never a read of other memory.
target_compile_definitions(quarn_options INTERFACE _GLIBCXX_ASSERTIONS)

if(CMAKE_BUILD_TYPE MATCHES "Rel")
  target_compile_definitions(quarn_options INTERFACE _FORTIFY_SOURCE=2)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Optimised, GCC 12 takes a literal + a std::string for a copy onto itself (GCC bug 105329).
  target_compile_options(quarn_options INTERFACE -Wno-restrict)
endif()

if(QUARN_SANITIZE)
  target_compile_options(quarn_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quarn_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all)
endif()

if(WIN32)
  # The oldest Windows whose calls are used: Windows 7.
  target_compile_definitions(quarn_options INTERFACE _WIN32_WINNT=0x0601 WINVER=0x0601 NOMINMAX WIN32_LEAN_AND_MEAN STRICT)
  # The 8-bit interfaces are the program's: its text is bytes throughout.
  target_compile_options(quarn_options INTERFACE -ffunction-sections -fdata-sections)
  target_link_options(quarn_options INTERFACE -static -Wl,--gc-sections -Wl,--dynamicbase -Wl,--nxcompat
    # The same source gives the same bytes, whenever it is linked.
    -Wl,--no-insert-timestamp
    # Here the stack protector lives in a library of its own.
    -fstack-protector-strong)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    target_link_options(quarn_options INTERFACE -Wl,--high-entropy-va)
  endif()
endif()
