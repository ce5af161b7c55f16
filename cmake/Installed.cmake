# What `cmake --install` leaves: all in one folder, since the programs find what comes with them
# beside themselves, and links to the two that are called by name.
set(installed lib/vardenix)
install(TARGETS vardenix vardenix-cli Loader companion vardenix-toolkit
  RUNTIME DESTINATION ${installed} LIBRARY DESTINATION ${installed})
if(TARGET vardenix-world)
  install(TARGETS vardenix-world RUNTIME DESTINATION ${installed})
endif()
install(FILES resources/NoTile.jpg DESTINATION ${installed})
install(CODE [[
  set(bin "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/bin")
  file(MAKE_DIRECTORY "${bin}")
  foreach(name vardenix vardenix-cli)
    file(CREATE_LINK "../lib/vardenix/${name}" "${bin}/${name}" SYMBOLIC)
  endforeach()
]])
