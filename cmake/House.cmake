# The house in CMake: one target per folder of src/, and an include root per target that holds
# just that folder's headers. A file can therefore include only what its target links, so an
# include that breaks the floors does not compile.

add_library(house_flags INTERFACE)
target_compile_options(house_flags INTERFACE -Wall -Wextra -Wconversion -Wshadow)
target_compile_options(house_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>)
if(VARDENIX_TESTS)
  target_compile_options(house_flags INTERFACE -Werror)
else()
  # At -O3, GCC 12 sees overlaps in joined texts that are not there.
  target_compile_options(house_flags INTERFACE
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
endif()
if(VARDENIX_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VARDENIX_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()

# Shows the headers named as "folder/Header.h" to whoever has the include root of `owner`.
function(house_show_headers owner folder)
  set(root ${CMAKE_BINARY_DIR}/include/${owner}/${folder})
  file(MAKE_DIRECTORY ${root})
  foreach(header IN LISTS ARGN)
    get_filename_component(name ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${name} SYMBOLIC)
  endforeach()
endfunction()

# house_folder(NAME LINKS a b ... PRIVATE_LINKS c ...): the library of src/NAME. NAME may be a
# windows folder ("theater/windows"); the target is then theater_windows.
function(house_folder folder)
  cmake_parse_arguments(ARG "" "" "LINKS;PRIVATE_LINKS" ${ARGN})
  string(REPLACE "/" "_" target ${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.h)
  file(GLOB forms CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.ui)
  house_show_headers(${target} ${folder} ${headers})
  if(sources)
    add_library(${target} STATIC ${sources} ${headers} ${forms})
    set(scope PUBLIC)
    target_link_libraries(${target} PRIVATE house_flags ${ARG_PRIVATE_LINKS})
  else()
    add_library(${target} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${target} ${scope} ${CMAKE_BINARY_DIR}/include/${target})
  target_link_libraries(${target} ${scope} ${ARG_LINKS})
  if(sources AND folder MATCHES "/windows$")
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
    # What moc and uic write is not held to this program's warnings.
    target_include_directories(${target} SYSTEM PRIVATE
      ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/include)
  endif()
endfunction()

# The headers that take most of a test's compiling are taken in once. A test names what it
# includes all the same.
function(house_precompile name)
  cmake_parse_arguments(ARG "" "" "LINKS;HEADERS" ${ARGN})
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp "int main() { return 0; }\n")
  add_executable(${name} ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE house_flags ${ARG_LINKS})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# house_tests(NAME LINKS ...): the test program of tests/NAME, its cases known to CTest.
# PRECOMPILED names the target whose precompiled headers it takes.
function(house_tests folder)
  cmake_parse_arguments(ARG "" "PRECOMPILED" "LINKS;PROPERTIES" ${ARGN})
  string(REPLACE "/" "_" target ${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*.cpp)
  add_executable(${target}_tests ${sources})
  target_link_libraries(${target}_tests PRIVATE house_flags ${ARG_LINKS} GTest::gtest_main)
  if(NOT ARG_PRECOMPILED)
    set(ARG_PRECOMPILED test_headers)
  endif()
  target_precompile_headers(${target}_tests REUSE_FROM ${ARG_PRECOMPILED})
  gtest_discover_tests(${target}_tests PROPERTIES LABELS ${target} TIMEOUT 300
    ${ARG_PROPERTIES} DISCOVERY_TIMEOUT 60)
endfunction()
