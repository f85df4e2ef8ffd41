# The country database of the program folder, made at build time from the ranges that Debian's package
# tor-geoipdb installs. The data's vendor, date and licence are written next to it.

# Where the package is not installed, run.sh and test.sh unpack it into build/debian.
set(QUARN_GEOIP_RANGES /usr/share/tor/geoip)
if(NOT EXISTS ${QUARN_GEOIP_RANGES})
  set(QUARN_GEOIP_RANGES ${CMAKE_SOURCE_DIR}/build/debian/tor-geoipdb/usr/share/tor/geoip)
endif()

# Adds a target that writes countryip.dat and countryip-licence.txt into a folder.
function(quarn_add_country_data target folder)
  if(NOT EXISTS ${QUARN_GEOIP_RANGES})
    message(FATAL_ERROR "No address ranges at ${QUARN_GEOIP_RANGES}: unpack Debian's package tor-geoipdb there, or install it.")
  endif()
  set(tool ${CMAKE_SOURCE_DIR}/tools/make-countryip/make-countryip)
  add_custom_command(
    OUTPUT ${folder}/countryip.dat ${folder}/countryip-licence.txt
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${tool} ${QUARN_GEOIP_RANGES} ${folder}/countryip.dat ${folder}/countryip-licence.txt
    DEPENDS ${tool} ${QUARN_GEOIP_RANGES}
    COMMENT "Making the country database"
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${folder}/countryip.dat ${folder}/countryip-licence.txt)
endfunction()
