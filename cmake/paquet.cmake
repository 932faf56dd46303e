# SPDX-License-Identifier: MIT
# Installing and packing:
#   cmake --install build/release --prefix FOLDER    the program, its man page, its copyright notice
#   cpack --config build/release/CPackConfig.cmake          the Debian package
#   cpack --config build/release/CPackSourceConfig.cmake    the source tarball
# Two builds of one commit give the same bytes (scripts/verifier_paquet.sh holds us to it): the paths
# of the build stay out of the program, and cmake/dater.cmake gives all files one date.

include(GNUInstallDirs)

# assert() and the like would put the place of the sources into the program.
target_compile_options(premiers_base INTERFACE
  $<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)

# ---- What is installed beside the program --------------------------------------------------------

set(paquet "${PROJECT_BINARY_DIR}/paquet")

# The notice names the version of PARI whose code the program holds.
find_file(PARI_VERSION_HEADER pari/paricfg.h REQUIRED)
mark_as_advanced(PARI_VERSION_HEADER)
file(STRINGS "${PARI_VERSION_HEADER}" pari_version REGEX "define PARIVERSION ")
string(REGEX REPLACE ".*Version ([0-9.]+).*" "\\1" pari_version "${pari_version}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/paquet/copyright.in" "${paquet}/copyright" @ONLY)

# comprimer(SOURCE FILE): FILE.gz, without the date and the name that gzip would put into it.
find_program(GZIP_PROGRAM gzip REQUIRED)
mark_as_advanced(GZIP_PROGRAM)
set(comprimes)
function(comprimer source file)
  add_custom_command(OUTPUT "${file}.gz"
    COMMAND "${GZIP_PROGRAM}" -9nc "${source}" > "${file}.gz"
    COMMAND chmod 644 "${file}.gz"
    DEPENDS "${source}" VERBATIM)
  set(comprimes ${comprimes} "${file}.gz" PARENT_SCOPE)
endfunction()

# What the Debian package holds besides, as a tree of its own.
set(debian "${paquet}/debian")
set(debian_doc "${debian}/usr/share/doc/premiers")
set(debian_overrides "${debian}/usr/share/lintian/overrides/premiers")
file(MAKE_DIRECTORY "${debian_doc}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/paquet/changelog.Debian.in"
  "${paquet}/changelog.Debian" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/cmake/paquet/lintian-overrides" "${debian_overrides}"
  NO_SOURCE_PERMISSIONS COPYONLY)

comprimer("${PROJECT_SOURCE_DIR}/docs/premiers.1" "${paquet}/premiers.1")
comprimer("${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${paquet}/changelog")
comprimer("${paquet}/changelog.Debian" "${debian_doc}/changelog.Debian")
add_custom_target(documents ALL DEPENDS ${comprimes})

install(TARGETS premiers)
install(FILES "${paquet}/premiers.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/fr/man1")
install(FILES "${paquet}/copyright" "${paquet}/changelog.gz" DESTINATION "${CMAKE_INSTALL_DOCDIR}")

# ---- The Debian package --------------------------------------------------------------------------

set(CPACK_GENERATOR DEB)
set(CPACK_INSTALLED_DIRECTORIES "${debian}" .)
set(CPACK_PACKAGE_CONTACT "L'equipe du projet premiers <equipe@premiers.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "interactive console about prime numbers (in French)")
set(CPACK_PACKAGE_DESCRIPTION
"Decomposes integers of any size into prime factors, lists the primes after
their ranks or between two bounds, counts them, finds runs of consecutive
primes with a given gap such as twin primes, and cuts the digits of a number
into primes. The dialogue is in French.")
set(CPACK_STRIP_FILES ON)
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/cmake/dater.cmake")
# Without the group's right to write, which some would give.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION math)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# ---- The source tarball --------------------------------------------------------------------------

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME "premiers-${PROJECT_VERSION}")
# Patterns on whole paths; a folder above may bear any name.
string(REGEX REPLACE "([][+.*()^$?|\\])" "\\\\\\1" racine "${PROJECT_SOURCE_DIR}")
set(CPACK_SOURCE_IGNORE_FILES "^${racine}/build/" "^${racine}/\\.git/" "^${racine}/\\.cache/")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PREMIERS_RACINE "${PROJECT_SOURCE_DIR}")

include(CPack)
