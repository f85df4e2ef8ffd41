# The program's pictures: drawn in resources/icons, rasterised here, bound into the program as resources.
#
#   include(${CMAKE_SOURCE_DIR}/cmake/Icons.cmake)
#   add_executable(quarn WIN32 ...)
#   quarn_add_icon_resources(quarn)
#
# has to be called in the directory that creates the target, and gives it these resources. Names are
# found whatever their case, so an icon's key is also its resource name.
#
#   "application"  ICON    the program icon, in the sizes of QUARN_APPLICATION_SIZES
#   <key>          ICON    one for each other picture in resources/icons, in the sizes of QUARN_PICTURE_SIZES
#   "flags"        BITMAP  the countries' flags side by side in one strip of 16x16 cells, 32 bits with alpha,
#                          as ImageList_Add takes it when loaded with LR_CREATEDIBSECTION
#   "flags"        RCDATA  the country codes in the order of that strip, upper case, each ended by a line feed
#
# Each picture is drawn once on a grid of its own (KEY.svg) and, where that grid does not meet the pixels
# of a size, again for that size (KEY-16.svg). A size takes the drawing made for it, or else the one made
# for half of it, whose edges stay on whole pixels when doubled, or else KEY.svg.

# What LoadImage finds without stretching: pictures of 16 pixels at 100, 125, 150, 200, 250 and 300 percent,
# and a toolbar that starts from 24 and moves up in steps of 8.
set(QUARN_PICTURE_SIZES 16 20 24 32 40 48)
set(QUARN_APPLICATION_SIZES ${QUARN_PICTURE_SIZES} 64 256)

set(QUARN_PICTURE_SOURCES ${CMAKE_CURRENT_LIST_DIR}/../resources/icons)
cmake_path(NORMAL_PATH QUARN_PICTURE_SOURCES)

function(quarn_require_tool variable tool package)
  find_program(${variable} ${tool})
  if(NOT ${variable})
    message(FATAL_ERROR "The pictures are made with ${tool}: install the Debian package ${package}.")
  endif()
endfunction()

quarn_require_tool(QUARN_RSVG_CONVERT rsvg-convert librsvg2-bin)
quarn_require_tool(QUARN_ICOTOOL icotool icoutils)
quarn_require_tool(QUARN_CONVERT convert imagemagick)

find_path(QUARN_FLAGS_DIR gb.png PATHS /usr/share/flags/countries/16x11 NO_CMAKE_FIND_ROOT_PATH)
if(NOT QUARN_FLAGS_DIR)
  message(FATAL_ERROR "The countries' flags are missing: install the Debian package famfamfam-flag-png.")
endif()

# Sets `result` to the drawing of the picture `key` that serves `size`.
function(quarn_select_drawing result key size)
  math(EXPR half "${size} / 2")
  math(EXPR doubled "${half} * 2")
  set(candidates ${key}-${size})
  if(doubled EQUAL size)
    list(APPEND candidates ${key}-${half})
  endif()
  foreach(candidate IN LISTS candidates ITEMS ${key})
    if(EXISTS ${QUARN_PICTURE_SOURCES}/${candidate}.svg)
      set(${result} ${QUARN_PICTURE_SOURCES}/${candidate}.svg PARENT_SCOPE)
      return()
    endif()
  endforeach()
  message(FATAL_ERROR "No drawing of the picture ${key} in ${QUARN_PICTURE_SOURCES}.")
endfunction()

# Makes `directory`/`key`.ico with one image for each of the sizes given after the named arguments.
function(quarn_add_ico directory key)
  set(drawings)
  set(images)
  set(rasterise)
  foreach(size IN LISTS ARGN)
    quarn_select_drawing(drawing ${key} ${size})
    set(image ${directory}/${key}-${size}.png)
    list(APPEND drawings ${drawing})
    list(APPEND rasterise COMMAND ${QUARN_RSVG_CONVERT} --width=${size} --height=${size} --output=${image} ${drawing})
    if(size GREATER_EQUAL 40)
      # Kept compressed: as bitmaps the large sizes, which few displays ask for, would be a fifth of the program.
      list(APPEND images --raw=${image})
    else()
      list(APPEND images ${image})
    endif()
  endforeach()
  list(REMOVE_DUPLICATES drawings)
  add_custom_command(
    OUTPUT ${directory}/${key}.ico
    ${rasterise}
    COMMAND ${QUARN_ICOTOOL} --create --icon --bit-depth=32 --output=${directory}/${key}.ico ${images}
    DEPENDS ${drawings} ${QUARN_PICTURE_SOURCES}/palette.css
    COMMENT "Drawing ${key}.ico"
    VERBATIM)
endfunction()

# Makes `directory`/flags.bmp and flags.txt out of the flags of whole countries. The package also holds
# parts of countries under longer names, which no address range is ever assigned to.
function(quarn_add_flag_strip directory)
  file(GLOB flags RELATIVE ${QUARN_FLAGS_DIR} CONFIGURE_DEPENDS ${QUARN_FLAGS_DIR}/[a-z][a-z].png)
  list(TRANSFORM flags REPLACE "\\.png$" "")
  list(APPEND flags eu)
  list(SORT flags)

  set(images)
  set(codes)
  foreach(flag IN LISTS flags)
    string(TOUPPER ${flag} code)
    string(APPEND codes "${code}\n")
    if(flag STREQUAL "eu")
      set(flag europeanunion)
    endif()
    list(APPEND images ${QUARN_FLAGS_DIR}/${flag}.png)
  endforeach()

  file(CONFIGURE OUTPUT ${directory}/flags.txt CONTENT "${codes}" @ONLY)
  add_custom_command(
    OUTPUT ${directory}/flags.bmp
    COMMAND ${QUARN_CONVERT} ${images} -background none -gravity center -extent 16x16 +append
            -strip -type TrueColorMatte -define bmp3:alpha=true BMP3:${directory}/flags.bmp
    DEPENDS ${images}
    COMMENT "Joining the flags"
    VERBATIM)
endfunction()

function(quarn_add_icon_resources target)
  set(directory ${CMAKE_CURRENT_BINARY_DIR}/icons)
  file(MAKE_DIRECTORY ${directory})

  file(GLOB keys RELATIVE ${QUARN_PICTURE_SOURCES} CONFIGURE_DEPENDS ${QUARN_PICTURE_SOURCES}/*.svg)
  list(TRANSFORM keys REPLACE "(-[0-9]+)?\\.svg$" "")
  list(REMOVE_DUPLICATES keys)
  list(REMOVE_ITEM keys quarn)

  quarn_add_ico(${directory} quarn ${QUARN_APPLICATION_SIZES})
  set(resources ${directory}/quarn.ico)
  # Names are quoted, as some are keywords of the resource compiler; file names are not, as it would join
  # them with the name that follows.
  set(statements "\"APPLICATION\" ICON quarn.ico\n")
  foreach(key IN LISTS keys)
    string(TOUPPER ${key} name)
    # The Explorer shows a program's first icon, and a resource directory is sorted: names before
    # numbers, names by their letters.
    if(NOT "APPLICATION" STRLESS name)
      message(FATAL_ERROR "The picture ${key} would take the program icon's place in the Explorer.")
    endif()
    quarn_add_ico(${directory} ${key} ${QUARN_PICTURE_SIZES})
    list(APPEND resources ${directory}/${key}.ico)
    string(APPEND statements "\"${name}\" ICON ${key}.ico\n")
  endforeach()

  quarn_add_flag_strip(${directory})
  list(APPEND resources ${directory}/flags.bmp ${directory}/flags.txt)
  string(APPEND statements "\"FLAGS\" BITMAP flags.bmp\n\"FLAGS\" RCDATA flags.txt\n")

  file(CONFIGURE OUTPUT ${directory}/icons.rc CONTENT "${statements}" @ONLY)
  set_source_files_properties(${directory}/icons.rc PROPERTIES
    INCLUDE_DIRECTORIES ${directory}
    OBJECT_DEPENDS "${resources}")
  target_sources(${target} PRIVATE ${directory}/icons.rc)
endfunction()
