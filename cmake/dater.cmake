# SPDX-License-Identifier: MIT
# Read by cpack when it starts: one date for all that it packs (the convention is
# SOURCE_DATE_EPOCH, of the Reproducible Builds project). It is that of the last commit; where
# there is no repository, as in the unpacked source tarball, that of CMakeLists.txt, which is the
# same.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  set(date)
  if(EXISTS "${CPACK_PREMIERS_RACINE}/.git")
    execute_process(
      COMMAND git -C "${CPACK_PREMIERS_RACINE}" log -1 --format=%ct
      OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  endif()
  if(NOT date MATCHES "^[0-9]+$")
    file(TIMESTAMP "${CPACK_PREMIERS_RACINE}/CMakeLists.txt" date "%s" UTC)
  endif()
  set(ENV{SOURCE_DATE_EPOCH} "${date}")
endif()
