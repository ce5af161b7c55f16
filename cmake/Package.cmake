# What a Debian package holds beside what Installed.cmake names, and how CPack makes it.
find_program(PANDOC pandoc REQUIRED)
set(linux ${CMAKE_SOURCE_DIR}/packaging/linux)
set(made ${CMAKE_BINARY_DIR}/package)
file(MAKE_DIRECTORY ${made})

# The version and its day are those of the newest chapter of the change log.
file(STRINGS ${CMAKE_SOURCE_DIR}/CHANGELOG.md newest REGEX "^## " LIMIT_COUNT 1)
if(NOT newest MATCHES "^## ([0-9.]+), ([0-9-]+)$" OR NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "CHANGELOG.md begins with another version than ${PROJECT_VERSION}")
endif()
set(VARDENIX_RELEASE_DATE ${CMAKE_MATCH_2})

# Pages for the browser and for man.
file(GLOB pictures CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/pictures/*)
set(pages)
foreach(page manual command-line)
  add_custom_command(OUTPUT ${made}/${page}.html
    COMMAND ${PANDOC} --from gfm --to html5 --standalone --metadata title=Vardenix
            --metadata lang=en --css manual.css --lua-filter ${linux}/links.lua
            --output ${made}/${page}.html ${CMAKE_SOURCE_DIR}/docs/${page}.md
    DEPENDS ${CMAKE_SOURCE_DIR}/docs/${page}.md ${linux}/links.lua VERBATIM)
  list(APPEND pages ${made}/${page}.html)
endforeach()
add_custom_command(OUTPUT ${made}/vardenix.1.gz
  COMMAND sh -c "'${PANDOC}' --standalone --to man '${linux}/vardenix.1.md' | gzip -9n >vardenix.1.gz"
  WORKING_DIRECTORY ${made} DEPENDS ${linux}/vardenix.1.md VERBATIM)
add_custom_command(OUTPUT ${made}/vardenix-cli.1.gz
  COMMAND sh -c "'${PANDOC}' --standalone --from gfm --to man -M title=VARDENIX-CLI -M section=1 '${linux}/vardenix-cli.name.md' '${CMAKE_SOURCE_DIR}/docs/command-line.md' | gzip -9n >vardenix-cli.1.gz"
  WORKING_DIRECTORY ${made} VERBATIM
  DEPENDS ${linux}/vardenix-cli.name.md ${CMAKE_SOURCE_DIR}/docs/command-line.md)
add_custom_command(OUTPUT ${made}/changelog.gz
  COMMAND sh -c "'${CMAKE_SOURCE_DIR}/packaging/linux/changelog.py' '${CMAKE_SOURCE_DIR}/CHANGELOG.md' | gzip -9n >changelog.gz"
  WORKING_DIRECTORY ${made} VERBATIM
  DEPENDS ${CMAKE_SOURCE_DIR}/CHANGELOG.md ${linux}/changelog.py)
add_custom_command(OUTPUT ${made}/vardenix-cli.bash
  COMMAND sh -c "HOME='${made}' '$<TARGET_FILE:vardenix-cli>' completion bash >vardenix-cli.bash"
  WORKING_DIRECTORY ${made} VERBATIM DEPENDS vardenix-cli)
add_custom_target(package_pages ALL DEPENDS ${pages} ${made}/vardenix.1.gz
  ${made}/vardenix-cli.1.gz ${made}/changelog.gz ${made}/vardenix-cli.bash)
configure_file(${linux}/example.vardenix.Vardenix.metainfo.xml.in
  ${made}/example.vardenix.Vardenix.metainfo.xml @ONLY)

install(FILES ${pages} ${linux}/manual.css DESTINATION share/vardenix/manual)
install(FILES ${pictures} DESTINATION share/vardenix/manual/pictures)
install(FILES ${linux}/by-package DESTINATION ${installed})
install(FILES ${made}/vardenix.1.gz ${made}/vardenix-cli.1.gz DESTINATION share/man/man1)
install(FILES ${made}/changelog.gz ${linux}/copyright DESTINATION share/doc/vardenix)
install(FILES ${made}/vardenix-cli.bash DESTINATION share/bash-completion/completions
  RENAME vardenix-cli)
install(FILES ${linux}/example.vardenix.Vardenix.desktop DESTINATION share/applications)
install(FILES ${made}/example.vardenix.Vardenix.metainfo.xml DESTINATION share/metainfo)
install(FILES ${linux}/vardenix-mime.xml DESTINATION share/mime/packages RENAME vardenix.xml)
install(FILES ${linux}/lintian-overrides DESTINATION share/lintian/overrides RENAME vardenix)
foreach(size 16 24 32 48 64 128 256)
  install(FILES resources/DEF${size}.png
    DESTINATION share/icons/hicolor/${size}x${size}/apps RENAME vardenix.png)
endforeach()
install(FILES resources/DEF.svg DESTINATION share/icons/hicolor/scalable/apps RENAME vardenix.svg)
# The programs look for the manual beside themselves.
install(CODE [[
  file(CREATE_LINK "../../share/vardenix/manual"
    "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/lib/vardenix/manual" SYMBOLIC)
]])

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vardenix)
set(CPACK_PACKAGE_CONTACT "The makers of Vardenix <makers@vardenix.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for the terrain of a flight simulator's theaters")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Vardenix shows the terrain of a theater and lets its makers change it post
by post: paint tiles with brushes, rectangles and fills, shape heights,
manage tiles and their pictures, and rebuild coarser levels and far tiles.
.
The package has the editor and vardenix-cli, which does the same work for
scripts and machines without a display.")
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "http://www.vardenix.example/vardenix")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/bin)
# What is opened at run time: the image library, the archiver, the window system's part of the
# toolkit, and the user's programs for pages.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libfreeimage3, 7zip | p7zip-full, libqt6gui6, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-liberation")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_SOURCE_DIR}/out)
include(CPack)
