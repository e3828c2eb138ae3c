# Run by CPack in the installed tree before it becomes a Debian package: adds the files that Debian requires of every
# package and compresses documentation, without a time stamp.
set(tree ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
set(documentation ${tree}/usr/share/doc/${CPACK_PACKAGE_NAME})

file(READ ${CPACK_KAVENDRA_SOURCE_DIR}/LICENSE licence)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]+)" _ "${licence}")
set(copyright ${CMAKE_MATCH_1})
string(REGEX REPLACE "^.*Copyright [^\n]*\n\n" "" licence "${licence}")
string(STRIP "${licence}" licence)
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REPLACE "\n" "\n " licence "${licence}")
file(WRITE ${documentation}/copyright
"Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: ${CPACK_PACKAGE_NAME}
Source: ${CPACK_DEBIAN_PACKAGE_HOMEPAGE}

Files: *
Copyright: ${copyright}
License: Expat

License: Expat
 ${licence}
")

set(entries)
foreach(release IN LISTS CPACK_KAVENDRA_RELEASES)
  string(REPLACE "|" ";" release "${release}")
  list(GET release 0 version)
  list(GET release 1 date)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date --utc --rfc-email --date=${date}
    OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  list(APPEND entries
"${CPACK_PACKAGE_NAME} (${version}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable\; urgency=medium

  * Version ${version}. Its changes are in changelog.gz.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
endforeach()
list(JOIN entries "\n" entries)
file(WRITE ${documentation}/changelog.Debian "${entries}")
configure_file(${CPACK_KAVENDRA_SOURCE_DIR}/CHANGELOG.md ${documentation}/changelog COPYONLY)

file(GLOB manuals ${tree}/usr/share/man/man1/*.1)
execute_process(COMMAND gzip --best --no-name
  ${documentation}/changelog ${documentation}/changelog.Debian ${manuals} COMMAND_ERROR_IS_FATAL ANY)
file(GLOB added ${documentation}/* ${tree}/usr/share/man/man1/*)
file(CHMOD ${added} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
