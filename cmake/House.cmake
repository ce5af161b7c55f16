# The house in CMake: one target per folder of src/, and an include root per target that holds
# just that folder's headers. A file can therefore include only what its target links, or what the headers
# of that need, so an include that breaks the floors does not compile.

add_library(house_flags INTERFACE)
target_compile_options(house_flags INTERFACE -Wall -Wextra -Wconversion -Wshadow)
target_compile_options(house_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>)
if(VARDENIX_TESTS)
  # At -O1, GCC 12 sees bounds of short texts overrun that are not.
  target_compile_options(house_flags INTERFACE -Werror
    "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-array-bounds;-Wno-stringop-overflow>")
else()
  # At -O3, GCC 12 sees overlaps in joined texts that are not there.
  target_compile_options(house_flags INTERFACE
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
endif()
if(VARDENIX_TESTS)
  add_custom_target(sanitized) # every test program that the sanitizers watch
  # Links a test program in a fifth of the time, and there are nearly a hundred of them.
  find_program(VARDENIX_LLD NAMES ld.lld)
  if(VARDENIX_LLD AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    add_link_options(-fuse-ld=lld)
  endif()
endif()
if(VARDENIX_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()

# Rooms that walk over posts, pixels or bytes; the others connect them, and what the compiler would do for their speed
# takes it longer than it ever saves a user.
set(rooms_with_budgets levels catalogue pictures pictures/fast mapview builder grounds search features workspace
                       recovery files)

# The optimiser's work for a target of a room that has no budget; of `folder` "" for a program's own files.
function(house_optimise target folder)
  if(NOT folder IN_LIST rooms_with_budgets)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  endif()
endfunction()

# Shows the headers named as "folder/Header.h" to whoever has the include root of `owner`.
function(house_show_headers owner folder)
  set(root ${CMAKE_BINARY_DIR}/include/${owner}/${folder})
  file(MAKE_DIRECTORY ${root})
  foreach(header IN LISTS ARGN)
    get_filename_component(name ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${name} SYMBOLIC)
  endforeach()
endfunction()

# Under the tests every library of the house has a twin NAME_sanitized, which the address and
# undefined behaviour sanitizers watch. The code of the tests themselves is compiled once and
# linked to both.
set(sanitizer_flags -fsanitize=address,undefined -fno-sanitize-recover=all)
set(has_twins OFF)
if(VARDENIX_TESTS AND NOT VARDENIX_FUZZ)
  set(has_twins ON)
endif()

# The twins of those targets that have one, the others as they are.
function(house_twins_of out)
  set(twins)
  foreach(target IN LISTS ARGN)
    if(TARGET ${target}_sanitized)
      list(APPEND twins ${target}_sanitized)
    else()
      list(APPEND twins ${target})
    endif()
  endforeach()
  set(${out} ${twins} PARENT_SCOPE)
endfunction()

# house_folder(NAME LINKS a b ... PRIVATE_LINKS c ... WITHOUT d.cpp ...): the library of src/NAME.
# NAME may be a folder below a room ("program/windows"); the target is then program_windows.
function(house_folder folder)
  cmake_parse_arguments(ARG "" "" "LINKS;PRIVATE_LINKS;WITHOUT" ${ARGN})
  string(REPLACE "/" "_" target ${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.h)
  file(GLOB forms CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.ui)
  foreach(file IN LISTS ARG_WITHOUT)
    list(REMOVE_ITEM sources ${CMAKE_SOURCE_DIR}/src/${folder}/${file})
  endforeach()
  house_show_headers(${target} ${folder} ${headers})
  house_library(${target})
  if(has_twins)
    house_twins_of(ARG_LINKS ${ARG_LINKS})
    house_twins_of(ARG_PRIVATE_LINKS ${ARG_PRIVATE_LINKS})
    house_library(${target}_sanitized)
    if(sources)
      set_target_properties(${target}_sanitized PROPERTIES EXCLUDE_FROM_ALL ON)
      target_compile_options(${target}_sanitized PRIVATE ${sanitizer_flags}
                             -fno-omit-frame-pointer)
    endif()
  endif()
endfunction()

# The files of a target are compiled as one, since most of the work is the reading of the headers that
# they share; a name in an unnamed namespace is so the whole room's. Under the tests only the twins are:
# the others so see an include that a file forgot, and compile no more than what was changed.
function(house_compile_together name)
  if(NOT has_twins OR name MATCHES "_sanitized$")
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
  endif()
endfunction()

# One of the two libraries of a folder; a part of house_folder, whose variables it reads.
function(house_library name)
  if(sources)
    add_library(${name} STATIC ${sources} ${headers} ${forms})
    set(scope PUBLIC)
    target_link_libraries(${name} PRIVATE house_flags ${ARG_PRIVATE_LINKS})
    house_optimise(${name} ${folder})
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${name} ${scope} ${CMAKE_BINARY_DIR}/include/${target})
  house_compile_together(${name})
  target_link_libraries(${name} ${scope} ${ARG_LINKS})
  if(sources AND folder MATCHES "/windows$")
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
    # What moc and uic write is not held to this program's warnings.
    target_include_directories(${name} SYSTEM PRIVATE
      ${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/include)
  endif()
endfunction()

# The code of tests is compiled more often than it is run: what it tests is optimised, it is not.
set(test_code_flags -O0)

# Headers that take most of the compiling of tests, taken in once. A file names what it includes
# all the same.
function(house_precompile name)
  cmake_parse_arguments(ARG "" "" "LINKS;HEADERS" ${ARGN})
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp "")
  add_library(${name} OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE house_flags ${ARG_LINKS})
  target_compile_options(${name} PRIVATE ${test_code_flags})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# house_tests(NAME LINKS ...): the test program of tests/NAME, its cases known to CTest.
# PRECOMPILED names the target whose precompiled headers it takes. ONCE: it starts whole
# programs or looks at files, and is not linked to the sanitized twins.
function(house_tests folder)
  cmake_parse_arguments(ARG "ONCE" "PRECOMPILED" "LINKS;PROPERTIES" ${ARGN})
  string(REPLACE "/" "_" target ${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*.cpp)
  add_library(${target}_test_code OBJECT ${sources})
  target_link_libraries(${target}_test_code PUBLIC house_flags ${ARG_LINKS} GTest::gtest)
  target_compile_options(${target}_test_code PRIVATE ${test_code_flags})
  if(NOT ARG_PRECOMPILED)
    set(ARG_PRECOMPILED test_headers)
  endif()
  target_precompile_headers(${target}_test_code REUSE_FROM ${ARG_PRECOMPILED})

  add_executable(${target}_tests $<TARGET_OBJECTS:${target}_test_code>)
  target_link_libraries(${target}_tests PRIVATE ${ARG_LINKS} GTest::gtest_main)
  gtest_discover_tests(${target}_tests PROPERTIES LABELS ${target} TIMEOUT 300
    ${ARG_PROPERTIES} DISCOVERY_TIMEOUT 60)
  if(NOT ARG_ONCE)
    house_twins_of(twins ${ARG_LINKS})
    add_executable(${target}_tests_sanitized EXCLUDE_FROM_ALL
                   $<TARGET_OBJECTS:${target}_test_code>)
    target_link_libraries(${target}_tests_sanitized PRIVATE ${twins} GTest::gtest_main)
    target_link_options(${target}_tests_sanitized PRIVATE ${sanitizer_flags})
    add_dependencies(sanitized ${target}_tests_sanitized)
    gtest_discover_tests(${target}_tests_sanitized TEST_PREFIX sanitized.
      PROPERTIES LABELS sanitized TIMEOUT 300 ${ARG_PROPERTIES} DISCOVERY_TIMEOUT 60)
  endif()
endfunction()
